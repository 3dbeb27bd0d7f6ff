# Functions for tests that open windows, read by them. They run on a display of their own (scripts/on-display.sh); what is
# started goes into `started` and ends with the test, and with it the folder "$work".
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

# until_true SENTENCE COMMAND...: waits until the command succeeds, up to 60 seconds.
until_true() {
    local what=$1 deadline=$((SECONDS + 60))
    shift
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt $deadline ] || fail "$what"
        sleep 0.1
    done
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
    done
    eval "$(xdotool getwindowgeometry --shell "$1")"
    # The window's place as the pointer finds it; its geometry counts the frame twice.
    eval "$(xdotool mousemove --window "$1" 0 0 getmouselocation --shell)"
    left=$X top=$Y
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
