#!/bin/sh
# Fails when the service program links a network client library: it starts
# once per web-server process and must stay small, so libcurl and net-snmp
# belong to bmc-alert-send and bmc-image-fetch alone.
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
