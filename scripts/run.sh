#!/bin/sh
# make run: one simulated BMC under ./state, served by lighttpd on
# 127.0.0.1:$PORT (HTTP) and $TLS_PORT (HTTPS) until Ctrl-C.
set -eu

build=$1
source_dir=$(cd "$(dirname "$0")/.." && pwd)
root="$source_dir/state"
port=${PORT:-8000}
tls_port=${TLS_PORT:-8443}
user=${BMC_USER:-admin}
password=${BMC_PASSWORD:-admin-pass1}

"$source_dir/scripts/prepare-instance.sh" "$root" "$build" "$port" "$tls_port" 2
bmcsim="$build/platform/sim/tool/bmcsim"
# The first start seeds the administrator; later starts keep the user table.
"$bmcsim" --root "$root" users seed "$user" "$password"
# Readings move as a real BMC's do, until `bmcsim sensors freeze`.
[ -e "$root/var/bmc/sensors.ini" ] || "$bmcsim" --root "$root" sensors drift
# Clients such as sushy read the service root before they log in.
settings="$root/nv/redfish/redfish.ini"
[ -e "$settings" ] || printf '[Service]\nUnauthenticatedServiceRoot=1\n' > "$settings"
# Event receivers and image servers of a BMC simulated on this host listen
# on loopback, which a real BMC refuses as a destination.
printf '[Destinations]\nAllowLocal=1\n' > "$root/nv/redfish/outbound.ini"

if [ "${HTTPS_ONLY:-0}" = 1 ]; then
    echo "Redfish service: https://127.0.0.1:$tls_port/redfish/v1 (plain HTTP on $port redirects to it)"
else
    echo "Redfish service: http://127.0.0.1:$port/redfish/v1 (https on port $tls_port)"
fi
echo "Administrator:   $user / $password"
echo "Simulator tool:  $bmcsim --root $root"
echo "Log:             $root/log/lighttpd-error.log"
echo "Destinations:    loopback and link-local allowed ($root/nv/redfish/outbound.ini)"
echo "Stop with Ctrl-C."
# The service processes inherit lighttpd's standard error: keep their
# diagnostics with the server's log.
exec lighttpd -D -f "$root/etc/lighttpd.conf" 2>>"$root/log/lighttpd-error.log"
