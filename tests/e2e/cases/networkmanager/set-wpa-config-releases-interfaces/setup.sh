chmod 600 /etc/NetworkManager/system-connections/*
