# The card is full: /etc gains a writable layer with no room left in it.
printf 'the wireless file the board had\n' >/etc/wpa_supplicant/wpa_supplicant.conf
mkdir -p /run/full
mount -t tmpfs -o size=64k qv-full /run/full
mkdir /run/full/upper /run/full/work
mount -t overlay qv-full-etc -o lowerdir=/etc,upperdir=/run/full/upper,workdir=/run/full/work /etc
dd if=/dev/zero of=/run/full/filler bs=4k 2>/dev/null || true
