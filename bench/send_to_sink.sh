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
# The median of every third rate, from the given one on.
median() { echo "$rates" | tr ' ' '\n' | sed '/^$/d' | awk -v first="$1" 'NR % 3 == first % 3' | sort -n | sed -n 2p; }
peer=$(median 1)
component=$(median 2)
program=$(median 3)
echo "median: smtp-source -d $peer/s, component $component/s, whole program $program/s"
echo "$peer $component $program" | awk '{
    printf "to smtp-source -d: component %.2f, whole program %.2f\n", $2 / $1, $3 / $1
}'
