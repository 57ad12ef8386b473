#!/usr/bin/env bash
# A library of this project keeps no state: it has no writable data of its own, and runs nothing of
# its own when it is loaded or unloaded.
set -euo pipefail
export LC_ALL=C
library=$1

# What the compiler's runtime puts into every library.
runtime='^(__dso_handle|__TMC_END__|completed\.0|DW\.ref\.__g(xx|cc)_personality_v0)$'

symbols=$(objdump -t "$library" |
    awk 'NF > 4 && $(NF - 2) ~ /^\.(data|bss|tdata|tbss)$/ { print $NF }')
grep -qx __dso_handle <<<"$symbols" || {
    echo "$library has no symbols to look at" >&2
    exit 1
}
own=$(grep -vE "$runtime" <<<"$symbols" | grep -v '^\.' | c++filt || true)
if [[ $own ]]; then
    printf '%s has writable data:\n%s\n' "$library" "$own" >&2
    exit 1
fi

# One pointer in each: the runtime's own.
size -A "$library" | awk '/^\.(init|fini)_array/ && $2 != 8 { print $1 " holds " $2 / 8 " functions"; bad = 1 }
    END { exit bad }'
