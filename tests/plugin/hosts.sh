# For the scripts beside it: a copy of the plug-ins in a folder that goes when the script ends, and how to say a fact.
# Usage: source hosts.sh; the script's first argument is the folder of the built plug-ins.

set -euo pipefail

work=$(mktemp -d)
started=()

finish()
{
    for process in "${started[@]:-}"; do
        [ -z "$process" ] || kill "$process" 2>/dev/null || true
        [ -z "$process" ] || wait "$process" 2>/dev/null || true
    done
    rm -rf "$work"
}
trap finish EXIT

# The system reads its user's folders, which must be this test's own.
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" XDG_RUNTIME_DIR="$work/run"
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

plugins="$work/plugins"
mkdir "$plugins"
for built in Platterdex.so Platterdex.vst3 Platterdex.lv2 adec.so; do
    [ ! -e "$1/$built" ] || cp -r "$1/$built" "$plugins/"
done

need()
{
    [ -x "$1" ] || command -v "$1" > /dev/null || {
        echo "SKIPPED: $1 is not installed on this machine."
        exit 77
    }
}

# expect PATTERN FILE: one line of the file matches.
expect()
{
    grep -Eq -- "$1" "$2" || {
        echo "FAILED: nothing in the host's output matches: $1"
        head -n 60 "$2" | sed 's/^/  | /'
        exit 1
    }
}
