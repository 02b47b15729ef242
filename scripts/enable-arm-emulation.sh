#!/bin/sh
# Lets this machine run armhf programs as if they were its own: qemu-user
# through the kernel's binfmt_misc, so that lighttpd, the tests and the
# service itself can start the armhf build's programs by name.
set -eu

if [ -f /proc/sys/fs/binfmt_misc/qemu-arm ] && grep -q '^enabled' /proc/sys/fs/binfmt_misc/qemu-arm; then
    exit 0
fi
if [ "$(id -u)" -ne 0 ]; then
    echo "armhf programs cannot run here: as root, run $0" >&2
    exit 1
fi
if [ ! -f /proc/sys/fs/binfmt_misc/register ]; then
    mount -t binfmt_misc binfmt_misc /proc/sys/fs/binfmt_misc
fi
update-binfmts --enable qemu-arm
