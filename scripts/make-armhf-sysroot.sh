#!/bin/sh
# Makes the root file system that the armhf build compiles against and that
# qemu-user runs it in:
#   make-armhf-sysroot.sh DIR
# Debian bookworm for armhf with every library the product and its tests
# link, from the suites and mirror of this machine's own apt sources. Kept
# when it already holds this package list.
set -eu

sysroot=$1
packages="libstdc++-12-dev libboost1.81-dev libssl-dev zlib1g-dev
libfcgi-dev libcurl4-openssl-dev libsnmp-dev libgtest-dev"
stamp="$sysroot/.packages"
wanted=$(echo $packages)

if [ -f "$stamp" ] && [ "$(cat "$stamp")" = "$wanted" ]; then exit 0; fi

# The mirror that serves bookworm here; the security suite's armhf indices
# are not always in step with amd64's, so only bookworm and its updates.
mirror=$(sed -n 's/^URIs: *//p' /etc/apt/sources.list.d/debian.sources 2>/dev/null | head -n 1)
mirror=${mirror:-http://deb.debian.org/debian}

rm -rf "$sysroot"
partial="$sysroot.partial"
rm -rf "$partial"
mkdir -p "$(dirname "$sysroot")"
mmdebstrap --quiet --variant=apt --arch=armhf --components=main \
    --include="$(echo $packages | tr ' ' ',')" bookworm "$partial" \
    "deb $mirror bookworm main" "deb $mirror bookworm-updates main"
echo "$wanted" > "$partial/.packages"
mv "$partial" "$sysroot"
