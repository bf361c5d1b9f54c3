# The interfaces file says static for eth0, but on NetworkManager only a profile counts, and
# there is none.
mkdir -p /etc/qv-netconf
printf 'networkmanager\n' >/etc/qv-netconf/backend
