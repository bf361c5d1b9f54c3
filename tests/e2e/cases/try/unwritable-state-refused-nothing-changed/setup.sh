# A read-only medium under the state directory.
mount -t tmpfs -o ro qv-ro /var/lib
