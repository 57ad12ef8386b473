#!/usr/bin/env bash
# The gallery and the tests in a minimal Debian root, from a clean clone: what a machine has by
# chance helps nobody there. Ends with status 77 where no such root can be made.
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

cannot() {
    echo "fresh: $1" >&2
    exit 77
}

((EUID == 0)) || cannot "a Debian root takes root to make; try sudo ./dev fresh"
unshare --mount --pid --fork true 2>/dev/null ||
    cannot "this machine lets nobody mount a root's /proc and /dev"

# As the machine gets its own packages.
apt-get update -qq
# shellcheck disable=SC2016 # apt-get fills these in itself
archives=$(apt-get indextargets --format '$(REPO_URI) $(CODENAME) $(COMPONENT)' \
    'Identifier: Packages' 'Origin: Debian' | sort -u)
read -r archive codename _ < <(grep -vE '^\S+ \S+-' <<<"$archives") ||
    cannot "the machine's package sources name no Debian archive"

root=$(mktemp -d "${TMPDIR:-/var/tmp}/dorvale-fresh.XXXXXX")
trap 'rm -rf --one-file-system "$root"' EXIT
echo "fresh: making a Debian root ($codename) in $root" >&2
debootstrap --variant=minbase "$codename" "$root" "$archive" >"$root.log" 2>&1 || {
    tail "$root.log" >&2
    cannot "debootstrap has failed; all it said is in $root.log"
}
rm "$root.log"
while read -r uri suite component; do
    echo "deb $uri $suite $component"
done <<<"$archives" >"$root/etc/apt/sources.list"
apt-config dump | grep -iE '^Acquire::(https?|ftp)::' >"$root/etc/apt/apt.conf.d/90fresh" || true
cp /etc/resolv.conf "$root/etc/resolv.conf"
git clone --quiet "$source" "$root/dorvale"

# What runs in there sees its own processes and mounts alone, and ends with this script.
# shellcheck disable=SC2016 # the inner shell's own argument
unshare --mount --pid --fork --kill-child bash -euo pipefail -c '
    mount --rbind /dev "$1/dev"
    mount -t proc proc "$1/proc"
    mount -t tmpfs shm "$1/dev/shm"
    exec env -i CI="${CI-}" HOME=/root TERM="${TERM-dumb}" \
        PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
        chroot "$1" bash -euc "cd /dorvale && ./dev gallery && ./dev test"
' fresh "$root"
