#!/bin/sh
# Installs the Debian packages that building, running and testing need;
# does nothing when they are all present. With "armhf", also those of the
# cross build for the BMC's 32-bit ARM and its run under emulation.
set -eu

packages="build-essential cmake ninja-build pkg-config libfcgi-dev libboost1.81-dev
libssl-dev zlib1g-dev libcurl4-openssl-dev libsnmp-dev
libgtest-dev clang-format lighttpd lighttpd-mod-openssl openssl python3-pytest
python3-pytest-xdist python3-requests python3-jsonschema python3-cryptography python3-sushy redfishtool
snmptrapd snmp python3-aiosmtpd python3-pyftpdlib wrk valgrind ansible"
if [ "${1:-}" = armhf ]; then
    packages="$packages crossbuild-essential-armhf mmdebstrap qemu-user-static binfmt-support"
fi

missing=""
for package in $packages; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing="$missing $package"
    fi
done
[ -z "$missing" ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null; then sudo="sudo"; else
        echo "missing packages:$missing (run as root to install them)" >&2
        exit 1
    fi
else
    sudo=""
fi
echo "installing:$missing"
$sudo apt-get update -q
# shellcheck disable=SC2086
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q --no-install-recommends $missing
