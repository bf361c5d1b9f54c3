# The card fills up while the files are written: /etc gains a writable layer with four pages left.
mkdir -p /run/full
mount -t tmpfs -o size=512k qv-full /run/full
mkdir /run/full/upper /run/full/work
mount -t overlay qv-full-etc -o lowerdir=/etc,upperdir=/run/full/upper,workdir=/run/full/work /etc
dd if=/dev/zero of=/run/full/filler bs=4k 2>/dev/null || true
truncate -s -16k /run/full/filler
