#!/usr/bin/env bash
# Installs Debian packages as root without questions, and without starting or enabling the mail servers among them:
# the tests run private ones, and nobody who builds a program wants a mail server on his machine.
set -eu

guard=/usr/sbin/policy-rc.d # asked by Debian's packages before they start a service; 101 means no
made_guard=no
if [ ! -e "$guard" ]; then
    printf '#!/bin/sh\nexit 101\n' >"$guard"
    chmod 755 "$guard"
    made_guard=yes
fi
trap '[ "$made_guard" = no ] || rm -f "$guard"' EXIT

services=()
for package in "$@"; do
    case $package in
        postfix)
            echo 'postfix postfix/main_mailer_type select No configuration' | debconf-set-selections
            services+=(postfix)
            ;;
        dovecot*) services+=(dovecot) ;;
    esac
done

DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "$@"

# Installed just now, for the tests: not to be started at the next boot either.
if [ -d /run/systemd/system ]; then
    for service in ${services[@]+"${services[@]}"}; do # an empty list is an error to old shells
        systemctl disable "$service" || echo "$service stays enabled; disable it if you do not want it." >&2
    done
fi
