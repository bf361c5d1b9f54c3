# NetworkManager 1.42 refuses a keyfile with status 0 and says so only in words, as measured on
# the device.
chmod 600 /etc/NetworkManager/system-connections/*
