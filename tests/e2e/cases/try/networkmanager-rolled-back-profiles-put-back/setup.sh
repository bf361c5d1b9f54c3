# wlan0 joined before the try (its profile active), eth0 not: the rollback brings back only wlan0.
# An eth0 profile of an earlier run, with bits of its own; no wlan0 profile yet: the try writes
# one and the rollback must remove it.
chmod 400 /etc/NetworkManager/system-connections/qv-netconf-eth0.nmconnection
