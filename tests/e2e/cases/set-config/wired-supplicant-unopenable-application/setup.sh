mkdir /etc/wpa_supplicant/wpa_supplicant_wired.conf
