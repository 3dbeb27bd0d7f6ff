#!/usr/bin/env bash
# Usage: install.sh BUILD. Installs a built tree into a folder: the program runs from there, man page and completion know every verb,
# nothing leads nowhere, and what the manifest names is all there is.
set -euo pipefail
export LC_ALL=C.UTF-8
build=$(realpath "$1")
sources=$(realpath "$(dirname "$0")/../..")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }

# A manifest of its own, so that one of the developer's stays.
cp "$build/install_manifest.txt" "$work/former.txt" 2>/dev/null || true
cmake --install "$build" --prefix "$work/usr" >"$work/install.log" 2>&1 || { cat "$work/install.log" >&2; fail "cmake --install"; }
mv "$build/install_manifest.txt" "$work/manifest.txt"
[ ! -f "$work/former.txt" ] || cp "$work/former.txt" "$build/install_manifest.txt"

cd "$work"
program=usr/bin/platterdex
[ "$($program --version)" = "$("$build/bin/platterdex" --version)" ] || fail "the installed program has another version"
$program demo-tracks tracks >/dev/null || fail "the installed program writes no tracks"
track=$(find tracks -name '*.flac' | sort | head -1)
$program analyse "$track" --root root | grep -q ',124.00,' || fail "the installed program does not find its decoder"
[ "$(LC_ALL=de_DE.UTF-8 $program --help | head -1)" != "$($program --help | head -1)" ] || fail "the languages are not found"

dangling=$(find usr -xtype l)
[ -z "$dangling" ] || fail "these lead nowhere: $dangling"
for folder in vst/platterdex vst3/Platterdex.vst3/Contents/*-linux lv2/Platterdex.lv2; do
    # shellcheck disable=SC2086 # the architecture's own name
    set -- usr/lib/$folder
    for file in Platterdex.so adec.so AudioGenSDK.so platterdex-scanner languages/de.mo manual/index.md; do
        [ -s "$1/$file" ] || fail "$1 has no $file"
    done
done

# Each verb of the source's table, with each option that it says to have.
zcat usr/share/man/man1/platterdex.1.gz >man
# shellcheck disable=SC1091
. usr/share/bash-completion/completions/platterdex
mapfile -t verbs < <(sed -n 's/^ *Verb { "\([a-z-]*\)".*/\1/p' "$sources/src/cli/Verbs.cpp")
[ ${#verbs[@]} -gt 20 ] || fail "only ${#verbs[@]} verbs were found in the source"
complete_words() {
    COMP_WORDS=(platterdex "$@") COMP_CWORD=$# COMPREPLY=()
    _platterdex
    printf '%s\n' "${COMPREPLY[@]}"
}
for verb in "${verbs[@]}"; do
    grep -qx "\.SS $verb" man || fail "the man page lacks $verb"
    complete_words "${verb:0:3}" | grep -qx -- "$verb" || fail "the completion lacks $verb"
    $program "$verb" --help >help
    while read -r option; do
        complete_words "$verb" "${option:0:4}" | grep -qx -- "$option" || fail "the completion of $verb lacks $option"
        grep -q -- "${option//-/\\\\-}" man || fail "the man page of $verb lacks $option"
    done < <(sed -n 's/^ *\(--[a-z][a-z-]*\).*/\1/p' help)
done
if command -v man >/dev/null; then
    warnings=$(man --warnings -l -E UTF-8 -Tutf8 man 2>&1 >/dev/null)
    [ -z "$warnings" ] || fail "the man page: $warnings"
fi

xargs -d '\n' rm <manifest.txt
find usr -type d -empty -delete
[ ! -e usr ] || fail "the manifest does not name $(find usr -not -type d | head -5)"
echo "${#verbs[@]} verbs, $(wc -l <manifest.txt) files"
