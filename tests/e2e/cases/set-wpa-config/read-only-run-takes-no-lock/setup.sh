rm -f /etc/wpa_supplicant/wpa_supplicant.conf /etc/wpa_supplicant/wpa_supplicant_wired.conf
# No room for the writers' lock: /run takes no new file.
mount -o remount,ro /run
