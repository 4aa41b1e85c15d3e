# shellcheck shell=bash disable=SC2154
# To be sourced: a virtual screen, and a session with the program on it. The memory of the screen is a file, so that
# looking for a colour is cheap. The caller defines $picture, the file for a screenshot when a wait fails, and, for a
# session, start(), which replaces its shell by a program of the package.

screen=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$screen"' EXIT

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

# The settings, sessions and devices of the person at the machine stay out of it.
own_surroundings() {
    mkdir -p "$screen/home/Desktop" "$screen/home/.config"
    mkdir -m 700 "$screen/run"
    unset WAYLAND_DISPLAY QT_QPA_PLATFORM XDG_DATA_HOME DBUS_SESSION_BUS_ADDRESS AT_SPI_BUS_ADDRESS
    export HOME=$screen/home XDG_CONFIG_HOME=$screen/home/.config XDG_RUNTIME_DIR=$screen/run LC_ALL=C.UTF-8
}

# open_screen [WIDTHxHEIGHT]
open_screen() {
    Xvfb -displayfd 3 -screen 0 "${1:-1280x900}x24" -fbdir "$screen" -ac -nolisten tcp 3>"$screen/number" 2>/dev/null &
    server=$!
    wait_until "the virtual screen" test -s "$screen/number"
    DISPLAY=:$(cat "$screen/number")
    export DISPLAY
}

# A window that appears while the window manager starts may never be shown.
open_window_manager() {
    openbox --startup "touch $screen/managed" >/dev/null 2>&1 &
    wait_until "the window manager" test -e "$screen/managed"
}

# shows BLUE GREEN RED LENGTH: true if so many pixels of that colour lie side by side.
shows() { LC_ALL=C grep -qaP "(\\x$1\\x$2\\x$3.){$4}" "$screen/Xvfb_screen0"; }
shows_graph() { shows 58 1c 00 12; } # as far as from one line of the grid to the next
shows_no_graph() { ! shows_graph; }
shows_pressing() { shows ff 9c 00 40; }
shows_start() { shows b8 67 00 80; } # The button 開始, enabled.

window() { xdotool search --onlyvisible --name "$1" | head -1 | grep .; }

# Sets $milliseconds, the time until the first picture.
start_program() {
    local begin=${EPOCHREALTIME/./}
    start tensio >"$screen/output" 2>&1 &
    program=$!
    wait_until "the first picture" shows_graph
    milliseconds=$(((${EPOCHREALTIME/./} - begin) / 1000))
}

stop_program() {
    kill "$program"
    wait "$program" 2>/dev/null || true
    wait_until "an empty screen" shows_no_graph
}

# measure_starts COUNT: sets $start_median and leaves the program running.
measure_starts() {
    local times=() sorted
    start_program
    echo "First start to first picture: $milliseconds ms"
    while [ "${#times[@]}" -lt "$1" ]; do
        stop_program
        start_program
        times+=("$milliseconds")
    done
    mapfile -t sorted < <(printf '%s\n' "${times[@]}" | sort -n)
    start_median=${sorted[$1 / 2]}
    echo "$1 later starts to first picture: median $start_median ms (${sorted[*]});" \
        "load of the machine $(cut -d' ' -f1 /proc/loadavg)"
}

expect_quick_starts() { [ "$start_median" -lt 700 ] || fail "More than 0.7 s from start to first picture."; }

press() { xdotool windowfocus --sync "$1" key "${@:2}"; }

begin_session() {
    local dialog
    press "$(window '^tensio')" F5
    wait_until "the dialog" window 測定の開始
    dialog=$(window 測定の開始)
    xdotool windowfocus --sync "$dialog" type Hanako
    press "$dialog" Return
    wait_until "the connection" window 模擬装置
    wait_until "a pressing" shows_pressing
}

end_session() {
    press "$(window '^tensio')" shift+F5
    wait_until "the end of the session" shows_start
}

measure_memory() {
    # The process number may belong to another program by now.
    [ "$(cat "/proc/$program/comm")" = tensio ] || fail "Not the program: $program"
    local resident
    resident=$(awk '$1 == "VmRSS:" { print $2 }' "/proc/$program/status")
    echo "Memory during a session: $((resident / 1024)) MB resident"
    [ "$resident" -lt $((120 * 1024)) ] || fail "More than 120 MB."
}
