#!/usr/bin/env bash
# Holds fuzz/readers.txt against the sources: every file that takes in bytes is listed, with a fuzzing program that there is and its
# seeds, or a reason; nothing is listed that is gone.
set -euo pipefail
cd "$(dirname "$0")/.."
calls='parseXML|XmlPullParser [a-z]|createInputStream|FileInputStream [a-z(]|loadFileAs(Data|String)|createReaderFor'
calls+='|ImageFileFormat::|TagLib::[A-Za-z:]*File|avformat_open_input|archive_read_open|sqlite3_open|PROT_READ, MAP_SHARED'
calls+='|PROT_WRITE, MAP_SHARED|MemoryInputStream|readBlock|std::ifstream [a-z]'
failed=0
say() { echo "$*" >&2; failed=1; }

found=$(grep -rlE "$calls" src --include=*.cpp --include=*.h | sort)
listed=$(awk '/^src/ { print $1 }' fuzz/readers.txt | sort)
while read -r file; do say "takes in bytes and is not in fuzz/readers.txt: $file"; done < <(comm -23 <(echo "$found") <(echo "$listed") | grep .)
while read -r file; do say "is in fuzz/readers.txt and takes in no bytes: $file"; done < <(comm -13 <(echo "$found") <(echo "$listed") | grep .)

while read -r file rest; do
    [ -n "$rest" ] || say "$file has neither a fuzzing program nor a reason"
    [[ $rest != -* ]] || continue
    for name in $rest; do
        [ -f "fuzz/${name}Fuzz.cpp" ] || say "$file: there is no fuzz/${name}Fuzz.cpp"
        grep -q "^px_fuzz ($name " fuzz/CMakeLists.txt || say "$file: $name is not built"
        [ -n "$(ls -A "fuzz/seeds/$name" 2>/dev/null)" ] || say "$file: $name has no seeds"
    done
done < <(grep '^src' fuzz/readers.txt)
while read -r name; do
    grep -qE "[ ]$name( |\$)" fuzz/readers.txt || [ "$name" = rules ] || [ "$name" = location ] || say "$name fuzzes no listed file"
done < <(sed -n 's/^px_fuzz (\([a-z_]*\) .*/\1/p' fuzz/CMakeLists.txt)
[ $failed = 0 ] && echo "$(wc -l <<<"$listed") files that take in bytes"
