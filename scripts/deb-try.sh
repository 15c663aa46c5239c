#!/usr/bin/env bash
# Uses the Debian packages on a system that has nothing: scripts/deb-try.sh [DIR]
# DIR has the packages; without it they are made (scripts/deb.sh). The system is Debian 12's smallest, in a
# folder of its own, with packages from where this machine has its own from. Only root can do that. What
# is fetched for it is kept in the user's cache; the system is taken away in the end.
# tests/consumer/packages_test.sh has the checks; the last line on stdout says what was used and how many passed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

[[ ${1:-} != --help ]] || { sed -n '2,6s/^# //p' "$0" && exit 0; }
((EUID == 0)) || die "only root can make a system in a folder"
need_packages "${packages_deb[@]}" "${packages_chroot[@]}"
if (($# > 0)); then
    packages=$(cd "$1" && pwd)
else
    packages=$("$root/scripts/deb.sh")
fi
names=$(find "$packages" -maxdepth 1 -name '*.deb' ! -name '*-dbgsym_*' | wc -l)
((names > 0)) || die "there are no packages in $packages"

# Where this machine has Debian 12 from: "deb ADDRESS SUITE main", the release itself first.
mapfile -t sources < <(apt-get indextargets --format '$(ORIGIN) deb $(REPO_URI) $(RELEASE) main' 'Created-By: Packages' |
    sed -n 's/^Debian \(deb .* bookworm[a-z-]* main\)$/\1/p' | awk '!seen[$0]++' | sort -s -k3,3)
mirror=$(printf '%s\n' "${sources[@]}" | awk '$3 == "bookworm" { print $2; exit }')
[[ -n $mirror ]] || die "this machine's apt knows no bookworm: type apt-get update"

base=$cache_folder/bookworm
archives=$cache_folder/bookworm-archives
log=$root/build/logs/deb-try.log
mkdir -p "$archives/partial" "$root/build"
exec 9>"$cache_folder/bookworm.lock"
flock 9
if [[ ! -f $base/etc/made ]]; then
    rm -rf "$base"
    quietly "a bare Debian" "$root/build/logs/debootstrap.log" \
        debootstrap --variant=minbase bookworm "$base" "$mirror" 9>&-
    touch "$base/etc/made"
fi

system=$(mktemp -d "$root/build/deb-try.XXXXXX")
trap 'rm -rf --one-file-system "$system"' EXIT
cp -a "$base/." "$system"
cp /etc/resolv.conf /etc/hosts "$system/etc"
printf '%s\n' "${sources[@]}" "deb [trusted=yes] file:/platen ./" >"$system/etc/apt/sources.list"
# How this machine reaches them, if it is by a proxy.
apt-config dump Acquire | grep -iE '^Acquire::(https?|proxy)[^ ]* ".' >"$system/etc/apt/apt.conf.d/90machine" || true
mkdir "$system/platen" "$system/try"
cp "$packages"/*.deb "$system/platen"
(cd "$system/platen" && dpkg-scanpackages --multiversion . 2>/dev/null >Packages)
cp -r "$root"/tests/consumer/. "$root/docs/examples" "$system/try"

# Mounts and processes of its own, which are gone when it ends; the services of packages are not started.
printf '#!/bin/sh\nexit 101\n' >"$system/usr/sbin/policy-rc.d"
chmod +x "$system/usr/sbin/policy-rc.d"
enter() {
    mount -t proc proc "$system/proc"
    mount --bind "$archives" "$system/var/cache/apt/archives"
    chroot "$system" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root bash -c \
        'apt-get update --quiet && /try/packages_test.sh'
}
export -f enter
export system archives
say "using $names packages on a bare Debian 12"
status=0
timeout 1800 unshare --mount --pid --fork --kill-child bash -euo pipefail -c enter >"$log" 2>&1 </dev/null 9>&- || status=$?
grep -E '^(ok|FAILED|  \|) ' "$log" >&2 || true
counts=$(tail -n 1 "$log")
[[ $counts =~ ^[0-9]+\ passed,\ [0-9]+\ failed$ ]] || { tail -n 40 "$log" | sed 's/^/  | /' >&2; counts='0 passed, 1 failed'; }
printf '%d packages on a bare Debian 12: %s\n' "$names" "$counts"
((status == 0)) && [[ $counts == *' 0 failed' && $counts != 0* ]]
