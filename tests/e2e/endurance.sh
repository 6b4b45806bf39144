#!/bin/bash
# A thousand times opened and closed, and a thousand structural moves, in one process each: what the process holds before
# and after. The first twenty rounds, in which caches and fonts are filled, come before the first measurement.
#   tests/e2e/endurance.sh build/dev/bin/distinte [ROUNDS]
set -euo pipefail
program=$(realpath "$1")
rounds=${2:-1000}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export HOME=$folder XDG_DATA_HOME=$folder/data XDG_CONFIG_HOME=$folder/config QT_QPA_PLATFORM=offscreen
unset DISTINTE_ODBC DISTINTE_ODBC_PASSWORD

start() {
    rm -f "$folder/prova.sqlite"
    "$program" --database "$folder/prova.sqlite" --create-demo
    coproc P { exec "$program" --database "$folder/prova.sqlite" --log "$folder/errori.log" --script -; }
    process=$P_PID
}

say() {
    echo "$1" >&"${P[1]}"
    read -r reply <&"${P[0]}"
    case $reply in *'"kind":"error"'* | *'"ok":false'*)
        echo "refused: $1: $reply" >&2
        exit 1
        ;;
    esac
}

end() {
    local descriptor=${P[1]}
    echo '{"do":"quit"}' >&"$descriptor"
    wait "$process"
}

held() { awk '/^VmRSS/ {print $2 " kB"}' "/proc/$process/status"; }
files() { find "/proc/$process/fd" -mindepth 1 | wc -l; }

# Both are handed over, so that what a script may still read is not counted as lost.
drain() {
    say '{"do":"services"}'
    say '{"do":"trace"}'
}

openAndClose() {
    say '{"do":"open"}'
    say '{"do":"close"}'
    drain
}

# Node 2020 goes to 2003 and back to where it was.
move() {
    local parent=2003
    (($1 % 2 == 0)) || parent=$home
    say '{"do":"focus","control":"TRW_ELEMDISTINTAORIG","id":2020}'
    say "{\"do\":\"focus\",\"control\":\"TRW_ELEMDISTINTADEST\",\"id\":$parent}"
    say '{"do":"answer","values":[6]}'
    say '{"do":"click","control":"CMD_SPOSTASTRU"}'
    drain
    case $reply in *CommitTrans*) ;; *)
        echo "not moved: $reply" >&2
        exit 1
        ;;
    esac
}

measure() {
    local what=$1 action=$2 round
    for ((round = 0; round < 20; ++round)); do "$action" "$round"; done
    local before filesBefore from
    before=$(held) filesBefore=$(files) from=$SECONDS
    for ((round = 0; round < rounds; ++round)); do "$action" "$round"; done
    echo "$what: $rounds in $((SECONDS - from)) s, $before before, $(held) after; files open $filesBefore, then $(files)"
}

start
measure "opened and closed" openAndClose
end

start
say '{"do":"open"}'
say '{"do":"select","control":"TRW_DISTINTEORIG","key":"C2"}'
say '{"do":"select","control":"TRW_DISTINTEDEST","key":"C2"}'
say '{"do":"read","control":"TRW_ELEMDISTINTAORIG"}'
home=$(grep -oP '"id":2020,"level":\d+,"parent":\K\d+' <<<"$reply")
measure "moved" move
end
