printf 'network={\n\tpsk=old\n}\n' >/etc/wpa_supplicant/wpa_supplicant.conf
printf 'old\n' >/etc/wpa_supplicant/wpa_supplicant_wired.conf
chmod 644 /etc/wpa_supplicant/wpa_supplicant.conf
chmod 666 /etc/wpa_supplicant/wpa_supplicant_wired.conf
