# The board's working supplicant files: a secret that does not decrypt must leave them as they are.
chmod 600 /etc/wpa_supplicant/wpa_supplicant.conf /etc/wpa_supplicant/wpa_supplicant_wired.conf
