# Functions for tests that open windows, read by them. They run on a display of their own (scripts/on-display.sh); what is
# started goes into `started` and ends with the test, and with it the folder "$work". The rule of all waiting: for a state that is
# seen, with a long patience; and before the next turn of the hand until the program has taken the last one (at_rest). A busy
# machine takes seconds for what a quiet one does at once.
work=$(mktemp -d)
started=()

clean_up() {
    for process in "${started[@]}"; do kill -9 "$process" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap clean_up EXIT

# Called with the sentence of a failure; a test may add what shows it to `before_failure`.
before_failure() { :; }
fail() {
    before_failure
    echo "FAILED: $*" >&2
    for log in "$work"/*.log; do echo "--- $log" >&2; tail -n 20 "$log" >&2; done
    exit 1
}

# at_rest: waits until the programs that were started have taken what was done; with --whole also until they load nothing.
window_rest=$(dirname "$(realpath "${BASH_SOURCE[0]}")")/window_rest.py
at_rest() { python3 "$window_rest" "$@" "${started[@]}"; }

# comes COMMAND...: waits until the command succeeds, up to 10 seconds, for what is tried again.
comes() {
    local deadline=$((SECONDS + 10))
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $deadline ] || return 1
        sleep 0.1
    done
}

# until_true SENTENCE COMMAND...: waits until the command succeeds, up to 120 seconds.
until_true() {
    local what=$1 deadline=$((SECONDS + 120))
    shift
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $deadline ] || fail "$what"
        sleep 0.1
    done
}

# is_shown NAME: there is a window of this name, a regular expression.
is_shown() { xdotool search --onlyvisible --name "$1"; }
is_gone() { [ -z "$(is_shown "$1" 2>&1)" ]; }
# window_of NAME: prints the number of the window of this name as soon as there is one. A search fails when any window goes
# while it looks, so it is one of several.
window_of() {
    local found deadline=$((SECONDS + 120))
    until found=$(is_shown "$1" 2>/dev/null | tail -1) && [ -n "$found" ]; do
        [ $SECONDS -lt $deadline ] || fail "no window is named $1"
        sleep 0.1
    done
    echo "$found"
}
# close_window NAME: as its frame would. The keys go to what has the keyboard, as the window may be gone before they come up.
close_window() {
    xdotool windowfocus --sync "$(window_of "$1")"
    xdotool key --clearmodifiers alt+F4
}

# has_keyboard NAME: what is typed goes to the window of this name, a regular expression.
has_keyboard() { [[ "$(xdotool getwindowfocus getwindowname)" =~ $1 ]]; }
# await_keyboard NAME: waits for that.
await_keyboard() {
    until_true "$1 has no keyboard" has_keyboard "$1"
    at_rest
}

# open_menu X Y [BUTTON]: clicks where a menu opens, and waits for it; again if a change of the focus has closed it.
open_menu() {
    menu_place=("$@")
    until_true "another menu stays" is_gone '^menu$'
    local attempt
    for attempt in 1 2 3; do
        xdotool mousemove "$1" "$2"
        at_rest
        xdotool click "${3:-1}"
        at_rest
        comes is_shown '^menu$' && break
    done
    until_true "no menu opens at $1, $2" is_shown '^menu$'
    at_rest
}
# choose KEYS...: keys for the menu, the last of which closes it.
choose() {
    is_shown '^menu$' >/dev/null || open_menu "${menu_place[@]}"
    xdotool key "$@"
    until_true "the menu stays after $*" is_gone '^menu$'
    at_rest
}

# The window on top of all others has this name.
is_on_top() {
    [ "$(xdotool getwindowname "$(xprop -root _NET_CLIENT_LIST_STACKING | sed 's/.*[ #]//')")" = "$1" ]
}

# find_window WINDOW: sets left, top, WIDTH and HEIGHT once it stands still.
find_window() {
    local last=none
    until [ "$last" = "$(xdotool getwindowgeometry "$1")" ]; do # it may still be on its way to its place
        last=$(xdotool getwindowgeometry "$1")
        sleep 0.5
        at_rest
    done
    eval "$(xdotool getwindowgeometry --shell "$1")"
    # The window's place as the pointer finds it; its geometry counts the frame twice.
    eval "$(xdotool mousemove --window "$1" 0 0 getmouselocation --shell)"
    left=$X top=$Y
}

# colour_at X Y: the colour of a point of the screen as six hexadecimal digits.
colour_at() {
    ffmpeg -loglevel error -f x11grab -video_size 8x8 -i "$DISPLAY+$1,$2" -frames:v 1 -pix_fmt rgb24 -f rawvideo - |
        od -An -v -tx1 -N3 | tr -d ' \n'
}

# start_drag_source PROGRAM FILE: shows a window whose upper left corner can be dragged as this file; its process is
# `source_process`.
start_drag_source() {
    "$1" "$2" >"$work/source.log" 2>&1 &
    source_process=$!
    started+=($source_process)
    window_of '^Drag source$' >/dev/null
    at_rest
}

# keep_pictures FOLDER: gives picture() its folder, and failures their picture.
keep_pictures() {
    pictures=$(realpath -m "$1")
    mkdir -p "$pictures"
    before_failure() { picture failed || true; }
}
# picture NAME: of the screen, without the pointer.
picture() {
    ffmpeg -loglevel error -y -f x11grab -draw_mouse 0 -video_size 1400x900 -i "$DISPLAY" -frames:v 1 "$pictures/$1.png"
}
