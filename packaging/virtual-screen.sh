# To be sourced: a virtual screen to look at and to click on. The memory of the screen is a file, so that looking costs
# next to nothing. Whoever sources this says in start() how a program is started, and in $picture where a picture goes
# when something does not happen.

screen=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$screen"' EXIT

fail() { echo "$1" >&2; exit 1; }

# wait_until WHAT COMMAND…: at most $patience seconds.
patience=60
wait_until() {
    local what=$1 end=$((SECONDS + patience))
    shift
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$end" ] || { import -window root "$picture" || true; fail "Waited in vain for $what."; }
    done
}

open_screen() {
    Xvfb -displayfd 3 -screen 0 1280x900x24 -fbdir "$screen" -ac -nolisten tcp 3>"$screen/number" 2>/dev/null &
    wait_until "the virtual screen" test -s "$screen/number"
    DISPLAY=:$(cat "$screen/number")
    export DISPLAY
}

# shows BLUE GREEN RED LENGTH: whether so many pixels of that colour lie side by side.
shows() { LC_ALL=C grep -qaP "(\\x$1\\x$2\\x$3.){$4}" "$screen/Xvfb_screen0"; }
shows_graph() { shows 58 1c 00 12; } # as far as from one line of the grid to the next
shows_no_graph() { ! shows_graph; }
shows_pressing() { shows ff 9c 00 40; }
shows_start() { shows b8 67 00 100; } # the button 開始, enabled

window() { xdotool search --onlyvisible --name "$1" | head -1 | grep .; }
click() { xdotool mousemove --window "$1" "$2" "$3" click 1; }

# The time goes to $milliseconds, what the program has used of a processor to $worked.
start_program() {
    local begin=${EPOCHREALTIME/./}
    start tensio >"$screen/output" 2>&1 &
    program=$!
    wait_until "the first picture" shows_graph
    milliseconds=$(((${EPOCHREALTIME/./} - begin) / 1000))
    worked=$(awk '{ print 10 * ($14 + $15) }' "/proc/$program/stat")
}

stop_program() {
    kill "$program"
    wait "$program" 2>/dev/null || true
    wait_until "an empty screen" shows_no_graph
}

in_order() { printf '%s\n' "$@" | sort -n; }

# measure_starts COUNT: leaves the program running, and the median in $start_median.
measure_starts() {
    local times=() work=() sorted worst
    start_program
    echo "First start to first picture: $milliseconds ms"
    while [ "${#times[@]}" -lt "$1" ]; do
        stop_program
        start_program
        times+=("$milliseconds")
        work+=("$worked")
    done
    mapfile -t sorted < <(in_order "${times[@]}")
    start_median=${sorted[$1 / 2]} worst=${sorted[$1 - 1]}
    mapfile -t sorted < <(in_order "${work[@]}")
    echo "$1 later starts to first picture: median $start_median ms, worst $worst ms (${times[*]})," \
        "of them at work ${sorted[$1 / 2]} ms; load of the machine $(cut -d' ' -f1 /proc/loadavg)"
}

expect_quick_starts() { [ "$start_median" -lt 700 ] || fail "More than 0.7 s from start to first picture."; }

press() { xdotool windowfocus --sync "$1" key "${@:2}"; }

begin_session() {
    local dialog
    press "$(window '^tensio')" space # 開始 has the focus
    wait_until "the dialog" window 測定の開始
    dialog=$(window 測定の開始)
    xdotool windowfocus --sync "$dialog" type Hanako
    press "$dialog" Return
    wait_until "the connection" window 模擬装置
    wait_until "a pressing" shows_pressing
}

end_session() {
    click "$(window '^tensio')" 964 602
    wait_until "the end of the session" shows_start
}

measure_memory() {
    # By name as well: another process of that number must not be measured in its place.
    [ "$(cat "/proc/$program/comm")" = tensio ] || fail "Not the program: $program"
    local resident proportional
    resident=$(awk '$1 == "Rss:" { print $2 }' "/proc/$program/smaps_rollup")
    proportional=$(awk '$1 == "Pss:" { print $2 }' "/proc/$program/smaps_rollup")
    echo "Memory with a running session: $((resident / 1024)) MB resident, $((proportional / 1024)) MB as its share"
    [ "$resident" -lt $((120 * 1024)) ] || fail "More than 120 MB."
}
