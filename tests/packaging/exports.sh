#!/usr/bin/env bash
# Compares what a library exports, demangled, with the list on record; with --approve, records it.
set -euo pipefail
export LC_ALL=C
approve=
if [[ $1 == --approve ]]; then
    approve=yes
    shift
fi
library=$1 list=$2

# On Windows a class's typeinfo is exported without the name that it points at.
expected() {
    case $library in
    *.dll) grep -v '^typeinfo name for ' "$list" ;;
    *) cat "$list" ;;
    esac
}

exported() {
    case $library in
    *.dll)
        x86_64-w64-mingw32-objdump -p "$library" |
            sed -n '/Ordinal\/Name Pointer/,/^$/s/^\t\[ *[0-9]*\] //p' | c++filt
        ;;
    *)
        nm -D --defined-only "$library" | cut -d ' ' -f 3 | c++filt
        ;;
    esac
}

if [[ $approve ]]; then
    exported | sort -u >"$list"
fi
diff --label expected --label "exported by $(basename "$library")" -u <(expected | sort -u) \
    <(exported | sort -u)
