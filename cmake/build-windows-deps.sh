#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Cross-builds expat, minizip and pugixml as static Windows libraries from the pristine sources of
# Debian's source packages, with zlib from libz-mingw-w64-dev. The case host reads zip and XML with
# one code on both platforms, so both get the same libraries. The result is kept; a second run does
# nothing.
#
# usage: cmake/build-windows-deps.sh [folder]     (default: build/windows-deps)
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")
out=${1:-$root/build/windows-deps}
mkdir -p "$out"
out=$(cd "$out" && pwd)

# Everything that decides the result: the stamp is this script and the toolchain.
stamp=$(cat "$0" "$here/toolchain-mingw.cmake" | sha256sum | cut -d' ' -f1)
if [[ -f $out/stamp && $(<"$out/stamp") == "$stamp" ]]; then
    echo "windows-deps: already built"
    exit 0
fi
# A step that fails shows the end of its log: the whole one would drown the message.
quietly() {
    local log=$out/$1.log
    shift
    if ! "$@" >"$log" 2>&1 </dev/null; then
        tail -n 40 "$log" >&2
        echo "windows-deps: failed: $* (whole log: $log)" >&2
        exit 1
    fi
}

# The machine's own package sources, main suite only, turned into source lists.
derive_source_lists() {
    local suite=$1 parts=$2 file
    for file in /etc/apt/sources.list.d/*.sources; do
        [[ -f $file ]] || continue
        awk -v RS= -v ORS='\n\n' -v FS='\n' -v suite="$suite" '
            {
                wanted = 0; text = ""; debian = 0
                for (i = 1; i <= NF; i++) {
                    line = $i
                    if (line ~ /^#/) continue
                    if (line ~ /^Suites:/) {
                        count = split(line, word, /[ \t]+/)
                        for (k = 2; k <= count; k++) if (word[k] == suite) wanted = 1
                        line = "Suites: " suite
                    }
                    if (line ~ /^Types:/) {
                        debian = line ~ /[ \t]deb([ \t-]|$)/
                        line = "Types: deb-src"
                    }
                    if (line ~ /^Enabled:[ \t]*no/) wanted = -1
                    text = text line "\n"
                }
                if (wanted == 1 && debian) printf "%s\n", text
            }' "$file" >"$parts/$(basename "$file")"
    done
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [[ -f $file ]] || continue
        sed -nE "s/^deb(-src)?[[:space:]]+((\[[^]]*\][[:space:]]+)?[^[:space:]]+[[:space:]]+${suite}[[:space:]])/deb-src \2/p" \
            "$file" | sort -u >"$parts/$(basename "$file" .list).list"
    done
    find "$parts" -type f -empty -delete
}

fetch_sources() {
    local apt=$out/apt suite
    # shellcheck disable=SC1091  # a file of the machine
    suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
    rm -rf "$apt"
    mkdir -p "$apt/parts" "$apt/lists/partial" "$apt/cache/archives/partial" "$out/download"
    derive_source_lists "$suite" "$apt/parts"
    local options=(
        -o Dir::Etc::SourceList=/dev/null
        -o "Dir::Etc::SourceParts=$apt/parts"
        -o "Dir::State::lists=$apt/lists"
        -o "Dir::Cache=$apt/cache"
        -o APT::Get::List-Cleanup=0
        -o APT::Sandbox::User=root
        -o Acquire::Languages=none
        -o Acquire::Retries=3
    )
    quietly apt-update apt-get "${options[@]}" update
    cd "$out/download"
    quietly apt-source apt-get "${options[@]}" source --download-only --tar-only expat minizip pugixml
    cd "$root"
}

# unpack <name>: the one pristine tarball of that name into src/<name>.
unpack() {
    local tarballs=("$out/download/$1"_*.orig.tar.*)
    [[ ${#tarballs[@]} == 1 && -f ${tarballs[0]} ]] || {
        echo "windows-deps: expected one source tarball of $1, found: ${tarballs[*]}" >&2
        exit 1
    }
    rm -rf "$out/src/$1"
    mkdir -p "$out/src/$1"
    tar -xf "${tarballs[0]}" -C "$out/src/$1" --strip-components=1
}

# build <name> <folder of its CMakeLists.txt> <cmake options...>
build() {
    local name=$1 folder=$2
    shift 2
    rm -rf "$out/obj/$name"
    quietly "$name-configure" cmake -S "$out/src/$folder" -B "$out/obj/$name" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$here/toolchain-mingw.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$out" -DCMAKE_INSTALL_LIBDIR=lib -DBUILD_SHARED_LIBS=OFF "$@"
    quietly "$name-build" cmake --build "$out/obj/$name" -j 2 --target install
}

# What an earlier set of libraries left would be found in place of these.
rm -rf "$out/stamp" "$out/include" "$out/lib"
echo "windows-deps: fetching the sources of expat, minizip and pugixml"
fetch_sources
unpack expat
unpack minizip
unpack pugixml
echo "windows-deps: building expat"
build expat expat/expat -DEXPAT_BUILD_TOOLS=OFF -DEXPAT_BUILD_EXAMPLES=OFF -DEXPAT_BUILD_TESTS=OFF \
    -DEXPAT_BUILD_DOCS=OFF -DEXPAT_BUILD_PKGCONFIG=OFF -DEXPAT_SHARED_LIBS=OFF
echo "windows-deps: building minizip"
# Its sources have no build for Windows. zlib's headers stand beside the toolchain's own.
cat >"$out/src/minizip/CMakeLists.txt" <<'TEXT'
cmake_minimum_required(VERSION 3.25)
project(minizip LANGUAGES C)
add_library(minizip STATIC ioapi.c unzip.c zip.c)
install(TARGETS minizip)
install(FILES ioapi.h unzip.h zip.h DESTINATION include/minizip)
TEXT
build minizip minizip
echo "windows-deps: building pugixml"
build pugixml pugixml
rm -rf "$out/apt" "$out/obj"
echo "$stamp" >"$out/stamp"
echo "windows-deps: done"
