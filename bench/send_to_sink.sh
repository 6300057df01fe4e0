#!/bin/sh
# Compares the SMTP component, and the whole program with window, engine and logs, with smtp-source on one machine:
# three rounds each, taking turns, against smtp-sink on loopback, in a network namespace of its own. Needs root and
# Debian's postfix package.
#
#   bench/send_to_sink.sh [BUILD_FOLDER] [COUNT]
set -eu

build=${1:-build/release}
count=${2:-5000}
port=2525

if [ "${IN_NAMESPACE:-}" != yes ]; then
    exec env IN_NAMESPACE=yes unshare --net "$0" "$build" "$count"
fi
ip link set lo up

smtp-sink -u nobody "127.0.0.1:$port" 1000 &
sink=$!
trap 'kill "$sink"' EXIT
sleep 1

peer_rate() {
    start=$(date +%s%N)
    smtp-source -d -m "$count" -l 1024 -f sender@example.org -t member@example.org "127.0.0.1:$port"
    end=$(date +%s%N)
    echo $((count * 1000000000 / (end - start)))
}

export QT_QPA_PLATFORM=offscreen
rates=
for round in 1 2 3; do
    peer=$(peer_rate)
    component=$("$build/bench/smtp_wire_bench" "$port" "$count")
    program=$("$build/bench/window_send_bench" "$port" "$count" 2>/dev/null)
    echo "round $round: smtp-source -d $peer/s, component $component/s, whole program $program/s"
    rates="$rates $peer $component $program"
done
echo "$rates" | awk '{
    for (i = 1; i <= NF; i += 3) { peer += $i; component += $(i + 1); program += $(i + 2) }
    printf "to smtp-source -d: component %.2f, whole program %.2f\n", component / peer, program / peer
}'
