#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds, tests and shows Fixtop on Debian. It asks nothing, installs what is missing, and ends with
# a status other than 0 when anything fails. `./go --help` tells the commands.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")" || exit 1

# Debian packages: who needs it, and its names. A command takes the rows that it asks for.
PACKAGES="
build     g++ cmake ninja-build ccache pkg-config python3
build     libexpat1-dev libminizip-dev zlib1g-dev libpugixml-dev libcli11-dev nlohmann-json3-dev
build     libedit-dev pybind11-dev python3-dev
test      libgtest-dev libgmock-dev libudunits2-dev
python    python3-numpy python3-pandas python3-pint python3-tqdm python3-venv python3-pip python3-setuptools
python    python3-graphviz graphviz python3-jinja2 python3-matplotlib python3-distributed
pytest    python3-pytest black flake8 mypy chromium
lint      clang-format clang-tidy git
package   dpkg-dev fakeroot file
windows   g++-mingw-w64-x86-64 mingw-w64-tools libz-mingw-w64-dev googletest xz-utils wine wine64
bench     libbenchmark-dev
fuzz      clang llvm libclang-rt-dev
coverage  gcovr
"

usage() {
    cat <<'TEXT'
usage: ./go <command>

  demo              build and show a case as a tree
  install [prefix]  build and install, below /usr/local or the given folder
  package           build a Debian package in build/package
  package windows   build a zip of the Windows programs in build/windows
  lint              look at the files that differ from the main branch: format, clang-tidy, rooms
  lint --all        the same over all files
  test              build and run the tests on Linux
  test --all        the same, then again with sanitizers and leak check, then as Windows programs;
                    and everything linked once more to find names that are defined in two ways
  python            build the Python package, install it into an environment in build/venv and start
                    a session on the built-in case
  bench             build and run the benchmarks
  fuzz [minutes]    build the fuzz targets and run each for some minutes (default 1)
  soak [steps]      run the random client with sanitizers, so many steps in each view (default 1000000)
  memory [step]     let each step-th allocation fail, in the module and in the program (default 1: each)
  coverage          run the tests instrumented; report in build/coverage/report/index.html
  --help            this text

Missing Debian packages are installed (with sudo, unless root). Everything built is under build/.
TEXT
}

say() { printf '\n== %s\n' "$*"; }
fail() {
    printf 'go: %s\n' "$*" >&2
    exit 1
}

as_root() {
    if [[ $(id -u) == 0 ]]; then "$@"; else sudo "$@"; fi
}

# need <row>...: installs what the rows of the table name and the machine lacks.
need() {
    local row missing=() name
    for row in "$@"; do
        while read -r name; do
            [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null) == installed ]] ||
                missing+=("$name")
        done < <(awk -v row="$row" '$1 == row { for (i = 2; i <= NF; i++) print $i }' <<<"$PACKAGES")
    done
    [[ ${#missing[@]} == 0 ]] && return
    command -v apt-get >/dev/null || fail "these packages are needed: ${missing[*]}"
    say "installing ${missing[*]}"
    as_root apt-get update -q </dev/null || fail "apt-get update failed"
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "${missing[@]}" </dev/null ||
        fail "installing failed"
}

# build <preset> [--target <name>...]: configures and builds; the preset's folder is build/<preset>.
build() {
    local preset=$1
    shift
    say "building $preset"
    cmake --preset "$preset" </dev/null >"build/$preset-configure.log" 2>&1 || {
        cat "build/$preset-configure.log"
        return 1
    }
    cmake --build "build/$preset" -j "$JOBS" "$@" </dev/null
}

# ---- test suites. Each leaves one line for the summary; a broken one doesn't stop the others.

SUMMARY=()
FAILED=0

# suite <preset> <title> <function...>: runs the function and notes how it went and how long it took.
suite() {
    local preset=$1 title=$2 start=$SECONDS result counts
    shift 2
    rm -f "build/$preset-ctest.log" "build/$preset-again.log"
    if "$@"; then
        result=passed
    else
        result=FAILED
        FAILED=1
    fi
    counts=$(sed -nE 's/^([0-9]+)% tests passed, ([0-9]+) tests? failed out of ([0-9]+).*/\3 tests, \2 failed/p' \
        "build/$preset-ctest.log" 2>/dev/null)
    [[ -f build/$preset-again.log ]] && counts+="; run again: $(sed -nE 's/.*Test +#[0-9]+: ([^ ]+) .*/\1/p' \
        "build/$preset-again.log" | sort -u | tr '\n' ' ')"
    SUMMARY+=("$(printf '%-8s %-44s %s (%s, %d s)' "$result" "$title" "$preset" \
        "${counts:-no test was run}" $((SECONDS - start)))")
}

summarize() {
    say "summary"
    printf '%s\n' "${SUMMARY[@]}"
    exit "$FAILED"
}

# run_ctest <preset>: the whole suite of a built preset.
run_ctest() {
    say "testing $1"
    ctest --test-dir "build/$1" --output-on-failure --no-tests=error -j "$JOBS" </dev/null 2>&1 |
        tee "build/$1-ctest.log"
}

linux_suite() { build release && run_ctest release; }

asan_suite() (
    export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:check_initialization_order=1
    export UBSAN_OPTIONS=print_stacktrace=1
    build asan && run_ctest asan
)

# Nothing is run: the linker compares what the sources of each program say of one name.
odr_suite() { build lto; }

# The Wine server is started apart from ctest: one that ctest starts keeps ctest's pipes open and
# ctest then waits for it for ever. The build runs a program that it has built.
windows_suite() (
    export WINEPREFIX=$PWD/build/wine WINEDEBUG=-all WINEARCH=win64
    export WINEDLLOVERRIDES="winedbg.exe=d;mscoree=d;mshtml=d"
    unset DISPLAY
    cmake/build-windows-deps.sh || exit 1
    say "starting Wine"
    mkdir -p "$WINEPREFIX"
    trap 'wineserver -k >/dev/null 2>&1' EXIT
    wineserver -p >/dev/null 2>&1 </dev/null
    timeout 180 wine cmd /c exit </dev/null >/dev/null 2>&1 || {
        echo "Wine does not start"
        exit 1
    }
    build windows || exit 1
    run_ctest windows || run_failed_again windows
)

# run_failed_again <preset>: alone, what did not pass; the summary tells it. Under the emulator a program
# now and then ends before its first line when the machine is loaded.
run_failed_again() {
    say "again, one by one: what failed of $1"
    ctest --test-dir "build/$1" --rerun-failed --output-on-failure --no-tests=error </dev/null 2>&1 |
        tee "build/$1-again.log"
}

# ---- commands

cmd_demo() {
    need build test
    build release --target src/all tools/all || fail "the build failed"
    build/release/tools/fixtop/fixtop demo || exit
    printf '\nThe program is %s; ./go install puts it where you like.\n' \
        "$PWD/build/release/tools/fixtop/fixtop"
}

# Names of the C++ files that a lint looks at: those that differ from where the branch left the main
# one, or from the commit before when this is the main one.
lint_files() {
    local base pattern='\.(h|cpp)$'
    if [[ ${1-} == --all ]]; then
        git ls-files --cached --others --exclude-standard | grep -E "$pattern"
        return
    fi
    base=$(git merge-base HEAD "${LINT_BASE:-main}" 2>/dev/null ||
        git merge-base HEAD origin/main 2>/dev/null)
    [[ -n $base && $base != "$(git rev-parse HEAD)" ]] || base=$(git rev-parse HEAD~1 2>/dev/null || echo HEAD)
    { git diff --name-only --diff-filter=d "$base" && git ls-files --others --exclude-standard; } |
        sort -u | grep -E "$pattern"
}

cmd_lint() {
    local files file sources failed=0
    case ${1-} in "" | --all) ;; *) usage >&2; exit 2 ;; esac
    need build test lint
    cmake --preset release </dev/null >build/release-configure.log 2>&1 || {
        cat build/release-configure.log
        fail "configuring failed"
    }
    mapfile -t files < <(lint_files "${1-}")
    # Of the tests and samples, which come with headers of others, the form is looked at.
    mapfile -t sources < <(printf '%s\n' "${files[@]}" |
        grep -E '^(src|casehost|client|tools)/.*\.cpp$' | grep -v '/windows\|_windows\|^tools/hovex/')
    say "format of ${#files[@]} files"
    for file in "${files[@]}"; do
        clang-format "$file" | diff -u --label "$file" --label "$file, formatted" "$file" - || failed=1
    done
    say "clang-tidy over ${#sources[@]} sources"
    [[ ${#sources[@]} == 0 ]] || printf '%s\0' "${sources[@]}" |
        xargs -0 -n 4 -P "$JOBS" clang-tidy -p build/release --quiet --warnings-as-errors='*' \
            2> >(grep -v 'warnings generated\|Suppressed\|^Use -header-filter' >&2) || failed=1
    say "rooms"
    python3 -B tests/layout/check_rooms.py . && python3 -B tests/layout/check_rooms_test.py || failed=1
    say "licences"
    python3 -B .ci/check_licence.py . || failed=1
    [[ $failed == 0 ]] || fail "lint found something"
}

# install_tree <prefix>: sudo only where the folder can't be written.
install_tree() {
    local folder=$1 words=(cmake --install build/release --prefix "$1")
    while [[ ! -e $folder ]]; do folder=$(dirname "$folder"); done
    if [[ -w $folder ]]; then "${words[@]}"; else as_root "${words[@]}"; fi
}

cmd_install() {
    local prefix=${1-/usr/local}
    [[ $prefix == /* ]] || prefix=$PWD/$prefix
    need build test
    build release --target src/all casehost/all client/all tools/all || fail "the build failed"
    say "installing into $prefix"
    install_tree "$prefix" >build/install.log || fail "installing failed"
    [[ $(id -u) == 0 && $prefix == /usr* ]] && ldconfig
    echo "The program is $prefix/bin/fixtop; the files are listed in build/install.log."
}

cmd_package_windows() {
    need build test windows
    cmake/build-windows-deps.sh || fail "the libraries failed"
    build windows --target hovex fixtop_cli || fail "the build failed"
    say "packing"
    (cd build/windows && rm -f ./*.zip && cpack -G ZIP) >build/package.log 2>&1 || {
        cat build/package.log
        fail "packing failed"
    }
    ls -l build/windows/*.zip
}

cmd_package() {
    case ${1-} in
        "") ;;
        windows) cmd_package_windows; return ;;
        *) usage >&2; exit 2 ;;
    esac
    need build package
    build package || fail "the build failed"
    say "packing"
    (cd build/package && rm -f ./*.deb && cpack -G DEB) >build/package.log 2>&1 || {
        cat build/package.log
        fail "packing failed"
    }
    ls -l build/package/*.deb
}

cmd_test() {
    local all=0
    case ${1-} in
        "") ;;
        --all) all=1 ;;
        *) usage >&2; exit 2 ;;
    esac
    need build test python pytest
    [[ $all == 0 ]] || need windows
    suite release "Linux" linux_suite
    if [[ $all == 1 ]]; then
        suite asan "Linux, sanitizers and leak check" asan_suite
        suite lto "Linux, one definition a name (link only)" odr_suite
        suite windows "Windows programs under Wine" windows_suite
    fi
    summarize
}

# The Debian package's Python: the one for which the binding is built.
cmd_python() {
    need build test python
    build release --target src/all || fail "the build failed"
    say "installing into build/venv"
    [[ -x build/venv/bin/python ]] || /usr/bin/python3 -m venv --system-site-packages build/venv ||
        fail "no environment"
    build/venv/bin/pip install --no-build-isolation --no-deps --no-index --quiet . || fail "pip failed"
    build/venv/bin/python -i -m fixtop.session "$@"
}

cmd_bench() {
    local program found=0
    need build bench python
    build bench || fail "the build failed"
    for program in build/bench/bench/*_bench; do
        [[ -x $program ]] || continue
        found=1
        say "$(basename "$program")"
        "$program" </dev/null || fail "$program failed"
    done
    [[ $found == 1 ]] || fail "no benchmark was built"
}

# What ships of the files that a target reads.
declare -A SHIPPED=([class_library]='QSI*.xml' [map_file]='HMAP*.xml' [units]='hunits.xml')

# fuzz_one <program> <minutes>: new inputs are kept in build/, the seeds stay as they are.
fuzz_one() {
    local name grown folders options=()
    name=$(basename "$1" _fuzz)
    grown=$PWD/build/fuzz/found/$name
    mkdir -p "$grown"
    folders=("$grown")
    [[ -d fuzz/corpus/$name ]] && folders+=("fuzz/corpus/$name")
    if [[ ${SHIPPED[$name]-} ]]; then
        mkdir -p "build/fuzz/shipped/$name"
        find src/resources -name "${SHIPPED[$name]}" -exec cp -t "build/fuzz/shipped/$name" {} +
        folders+=("build/fuzz/shipped/$name")
    fi
    [[ -f fuzz/$name.dict ]] && options+=("-dict=fuzz/$name.dict")
    say "fuzzing $name for $2 min"
    "$1" "${options[@]}" -max_total_time=$((60 * $2)) -timeout=10 -print_final_stats=1 \
        -artifact_prefix="$grown-" "${folders[@]}" </dev/null
}

cmd_fuzz() {
    local minutes=${1-1} program found=0
    [[ $minutes =~ ^[1-9][0-9]*$ ]] || { usage >&2; exit 2; }
    need build fuzz
    build fuzz || fail "the build failed"
    for program in build/fuzz/fuzz/*_fuzz; do
        [[ -x $program ]] || continue
        found=1
        fuzz_one "$program" "$minutes" || fail "$program found an input that breaks it"
    done
    [[ $found == 1 ]] || fail "no fuzz target was built"
}

cmd_soak() {
    local steps=${1-1000000} view host
    [[ $steps =~ ^[1-9][0-9]*$ ]] || { usage >&2; exit 2; }
    need build test
    build asan --target lifetimes_soak || fail "the build failed"
    for host in case_host own_host; do
        for view in raw neutral mixed; do
            say "$steps steps, $host, $view"
            ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
                build/asan/tests/lifetimes/lifetimes_soak "$steps" "$RANDOM" "$view" "$host" \
                </dev/null || fail "the random client failed"
        done
    done
}

cmd_memory() {
    local step=${1-1}
    [[ $step =~ ^[1-9][0-9]*$ ]] || { usage >&2; exit 2; }
    need build test
    build release || fail "the build failed"
    say "memory runs out in the module"
    on_all_cores "$step" memory_in_module || fail "the module failed"
    say "memory runs out in the program"
    on_all_cores "$step" memory_in_program || fail "the program failed"
}

# Calls a function with a step and a first number on each core, so that they share each step-th.
on_all_cores() {
    local step=$1 function=$2 cores first runs=() run good=0
    cores=$(nproc)
    for ((first = 0; first < cores; ++first)); do
        "$function" $((step * cores)) $((1 + step * first)) &
        runs+=($!)
    done
    for run in "${runs[@]}"; do wait "$run" || good=1; done
    return $good
}

memory_in_module() {
    build/release/tests/memory/memory_test all "$1" "$2" </dev/null
}

memory_in_program() {
    MEMORY_STEP=$1 MEMORY_FIRST=$2 FIXTOP_PROGRAM=$PWD/build/release/tools/fixtop/fixtop \
        MEMORY_PRELOAD=$PWD/build/release/tests/memory/libmemory_preload.so \
        python3 -B tests/memory/program_test.py -v </dev/null
}

cmd_coverage() {
    need build test python pytest coverage
    build coverage || fail "the build failed"
    find build/coverage -name '*.gcda' -delete
    run_ctest coverage || fail "a test failed"
    say "coverage"
    mkdir -p build/coverage/report
    gcovr --root . --filter src/ --filter casehost/ --filter tools/ --exclude-throw-branches \
        --gcov-ignore-parse-errors --print-summary --html-details build/coverage/report/index.html \
        build/coverage || fail "gcovr failed"
    echo "report: build/coverage/report/index.html"
}

JOBS=$(nproc)
mkdir -p build
command=${1-}
shift
case $command in
    demo | bench | coverage) [[ $# == 0 ]] || { usage >&2; exit 2; }; "cmd_$command" ;;
    install | package | python | lint | test | fuzz | soak | memory) [[ $# -le 1 ]] || { usage >&2; exit 2; }; "cmd_$command" "$@" ;;
    -h | --help | help) usage ;;
    *) usage >&2; exit 2 ;;
esac
