#!/bin/sh
# Fails when the service program links a network client library or the
# shared C++ runtime: it starts once per web-server process and must stay
# small, so libcurl and net-snmp belong to bmc-alert-send and
# bmc-image-fetch alone, and the C++ runtime is linked in (only what the
# service uses).
#   check-linked-libraries.sh BUILD_DIR/service/index.fcgi
set -eu

if ! needed=$(readelf -d "$1" | grep NEEDED); then
    echo "cannot read the libraries that $1 needs" >&2
    exit 1
fi
if echo "$needed" | grep -Ei 'curl|snmp'; then
    echo "$1 must link neither libcurl nor net-snmp" >&2
    exit 1
fi
if echo "$needed" | grep -E 'libstdc\+\+|libgcc_s'; then
    echo "$1 must not load the shared C++ runtime" >&2
    exit 1
fi
