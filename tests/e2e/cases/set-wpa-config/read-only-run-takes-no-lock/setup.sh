# No room for the writers' lock: /run takes no new file.
mount -o remount,ro /run
