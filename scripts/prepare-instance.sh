#!/bin/sh
# Prepares the state root of one simulated BMC and its lighttpd
# configuration:
#   prepare-instance.sh ROOT BUILD_DIR PORT TLS_PORT PROCESSES
# Idempotent: state already under ROOT is kept.
set -eu

root=$1 build=$2 port=$3 tls_port=$4 processes=$5
source_dir=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$build" && pwd)

mkdir -p "$root/tmp/web/bin" "$root/tmp/www" "$root/nv/redfish" "$root/run" "$root/log" \
         "$root/etc/ssl"
ln -sfn "$build/service/index.fcgi" "$root/tmp/web/bin/index.fcgi"
# Session records are named by their tokens: only the user that runs the
# web server and the service may list the BMC's /tmp.
chmod 700 "$root/tmp"
# The simulated BMC's flash program, event filter and alert delivery, and
# the service's programs for event alerts and image downloads, where they
# run.
mkdir -p "$root/usr/sbin"
ln -sfn "$build/platform/sim/fw_update/fw_update" "$root/usr/sbin/fw_update"
ln -sfn "$build/platform/sim/alert_send/bmc-alert-send" "$root/usr/sbin/bmc-alert-send"
ln -sfn "$build/platform/sim/event_filter/bmc-event-filter" "$root/usr/sbin/bmc-event-filter"
ln -sfn "$build/update/image_fetch/bmc-image-fetch" "$root/usr/sbin/bmc-image-fetch"
ln -sfn "$build/tasks/event_alert/bmc-event-alert" "$root/usr/sbin/bmc-event-alert"

# The web server's own certificate, made once per instance.
if [ ! -s "$root/etc/ssl/server.pem" ]; then
    openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 3650 \
        -subj "/CN=bmc.localdomain" -keyout "$root/etc/ssl/server.key" \
        -out "$root/etc/ssl/server.crt" 2>/dev/null
    cat "$root/etc/ssl/server.key" "$root/etc/ssl/server.crt" > "$root/etc/ssl/server.pem"
    chmod 600 "$root/etc/ssl/server.key" "$root/etc/ssl/server.pem"
fi

# Static content: the DMTF schemas and Base registry when the DMTF files
# are checked out beside the repository, and the OEM registry generated from
# the service's message table and the event registry generated from the
# platform's event messages. Registry files are named after the registry
# they hold ("Base.1.10.3.json").
www="$root/tmp/www"
mkdir -p "$www/schemas/v1" "$www/registries"
dmtf="$source_dir/../shared/redfish"
if [ -d "$dmtf" ]; then
    dmtf=$(cd "$dmtf" && pwd)
    ln -sf "$dmtf"/json-schema/*.json "$dmtf"/csdl/*.xml "$dmtf/LICENSE.md" "$www/schemas/v1/"
    ln -sf "$dmtf/registries/Base.1.10.3.json" "$www/registries/"
fi
# The CSDL of the service's own Oem extension types.
ln -sf "$(cd "$source_dir/deploy/schemas" && pwd)"/*.xml "$www/schemas/v1/"
# A generated registry: the tool's output, renamed into place whole.
install_registry() {
    generated=$(mktemp "$www/registries/.$2.XXXXXX")
    "$build/framework/tools/$1" > "$generated" || { rm -f "$generated"; exit 1; }
    chmod 644 "$generated"
    mv -f "$generated" "$www/registries/$2"
}
install_registry oem_registry TWR.1.0.0.json
install_registry event_registry Event.1.0.0.json
install_registry bios_registry BiosAttributeRegistry.1.0.0.json

# HTTPS_ONLY=1 sends every Redfish request that comes over HTTP to HTTPS.
https_only=""
if [ "${HTTPS_ONLY:-0}" = 1 ]; then https_only="$source_dir/deploy/lighttpd-https-only.conf.in"; fi
sed -e "s|@ROOT@|$root|g" -e "s|@PORT@|$port|g" -e "s|@TLS_PORT@|$tls_port|g" \
    -e "s|@PROCS@|$processes|g" "$source_dir/deploy/lighttpd.conf.in" ${https_only:+"$https_only"} \
    > "$root/etc/lighttpd.conf"
