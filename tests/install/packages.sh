#!/usr/bin/env bash
# Builds the Debian packages, installs them into an empty root whose dpkg knows nothing but what they depend on, uses them
# there, and removes them: packages.sh SOURCE WORK COMPILER
set -euo pipefail

source="$1"
work="$2"
compiler="$3"
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# Where dpkg finds ldconfig, also for who is not root.
export PATH="$PATH:/usr/sbin:/sbin"
unset LD_LIBRARY_PATH WEBI18N_DATA

rm -rf "$work"
mkdir -p "$work"
"$source/scripts/package" >"$work/package.txt" || { cat "$work/package.txt"; exit 1; }
mapfile -t packages < <(sed -nE "s|^(build/package/.*\.deb)$|$source/\1|p" "$work/package.txt")

fault() {
    echo "$1"
    exit 1
}

packageOf() {
    dpkg-deb -f "$1" Package
}

# The names that a package depends on, one a line.
dependenciesOf() {
    dpkg-deb -f "$1" Depends | tr ',' '\n' | sed -E 's/^ *//; s/[ (].*//' | grep -v '^$' || true
}

names="$(for package in "${packages[@]}"; do packageOf "$package"; done)"
diff <(printf '%s\n' libwebi18n-dev libwebi18n1 webi18n webi18n-data webi18n-doc) <(LC_ALL=C sort <<<"$names")

for package in "${packages[@]}"; do
    for field in Version Architecture Maintainer Section Description; do
        [[ -n "$(dpkg-deb -f "$package" "$field")" ]] || fault "$package: no $field"
    done
done

# dpkg in the root, as if by its administrator.
root="$work/root"
asRoot=()
[[ $(id -u) == 0 ]] || asRoot=(fakeroot)
rootDpkg() {
    "${asRoot[@]}" dpkg --root="$root" --log=/dev/null "$@" >"$work/dpkg.txt" 2>&1
}
mkdir -p "$root/var/lib/dpkg/"{info,updates,triggers}
touch "$root/var/lib/dpkg/status"

# The command alone is refused: what it depends on is not there.
for package in "${packages[@]}"; do
    if [[ "$(packageOf "$package")" == webi18n ]]; then
        ! rootDpkg --install "$package" || fault "webi18n can be installed without the library"
        grep -q 'depends on libwebi18n1' "$work/dpkg.txt" || { cat "$work/dpkg.txt"; exit 1; }
        rootDpkg --purge webi18n
    fi
done

# As if what they depend on, in the versions of this system, had been installed there.
for package in "${packages[@]}"; do
    dependenciesOf "$package"
done | sort -u | grep -vxF "$names" | while read -r name; do
    dpkg-query -s "$name"
    echo
done >"$root/var/lib/dpkg/status"
rootDpkg --install "${packages[@]}" || { cat "$work/dpkg.txt"; exit 1; }
for name in $names; do
    dpkg-query --admindir="$root/var/lib/dpkg" -W -f='${db:Status-Status}\n' "$name" | grep -qx installed ||
        fault "$name is not installed"
done

# Each library that a package's programs and libraries need is its own, or of a package that it depends on.
libraries=0
for package in "${packages[@]}"; do
    name="$(packageOf "$package")"
    declared="$(dependenciesOf "$package")"
    mapfile -t files < <(dpkg-query --admindir="$root/var/lib/dpkg" -L "$name")
    for file in "${files[@]}"; do
        [[ -f $root$file && ! -L $root$file ]] && readelf -h "$root$file" >/dev/null 2>&1 || continue
        for library in $(readelf -d "$root$file" 2>/dev/null | sed -nE 's/.*\(NEEDED\).*\[(.*)\]/\1/p'); do
            owners="$({ dpkg-query --admindir="$root/var/lib/dpkg" -S "*/$library" || dpkg-query -S "*/$library"; } 2>/dev/null |
                sed -E 's/[:,].*//' | sort -u)"
            [[ -n $owners ]] && grep -qxF "$declared"$'\n'"$name" <<<"$owners" ||
                fault "$name: $file needs $library of '$owners', not declared"
            libraries=$((libraries + 1))
        done
    done
done
((libraries > 5)) || fault "only $libraries needed libraries were looked at"

# Its programs and libraries are those of a release.
for check in hardened searchpaths; do
    "$here/../architecture/$check.sh" "$root/usr" || fault "not $check"
done

# The command finds its data beside itself; the library is where the root's loader would look.
folder="$(dirname "$(find "$root/usr/lib" -name 'libwebi18n.so.1')")"
LC_ALL=C grep -q '"locale":"fr-ca"' <(LD_LIBRARY_PATH="$folder" "$root/usr/bin/webi18n" explain --json 'fr-CA,fr;q=0.9')
[[ "$(LD_LIBRARY_PATH="$folder" "$root/usr/bin/webi18n" --version)" == "webi18n $(dpkg-deb -f "${packages[0]}" Version)" ]]
! readelf -d "$root/usr/bin/webi18n" "$folder"/lib*.so | grep -E 'R(UN)?PATH.*/\.\.' || fault "a search path of an installation elsewhere"
test -s "$root/usr/share/man/man1/webi18n.1.gz"
test -s "$root/usr/share/bash-completion/completions/webi18n"
test -s "$root/usr/share/doc/webi18n-doc/html/index.html"

# A foreign project builds by the development package.
"$here/makeproject.sh" "$root/usr" "$work" "$compiler"

# shellcheck disable=SC2086
rootDpkg --purge $names || { cat "$work/dpkg.txt"; exit 1; }
left="$(cd "$root" && find . -path ./var/lib/dpkg -prune -o ! -type d -print)"
[[ -z $left ]] || fault "left behind: $left"
echo "${#packages[@]} packages, $libraries needed libraries"
