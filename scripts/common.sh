# shellcheck shell=bash
# What the scripts of this folder, ./run and ./check have in common. Sourced, never run.

repo=$(cd "${BASH_SOURCE[0]%/*}/.." && pwd -P)
logs=$repo/build/logs

# Standard output belongs to the program that is run, so all talk goes to standard error.
say() { printf '== %s\n' "$*" >&2; }
die() {
    say "error: $*"
    exit 1
}

# Linker scripts and dlltool take their file names unquoted.
[[ $repo != *[[:space:]]* ]] || die "the path of this folder contains white space: $repo. Please move it."

# as_root COMMAND ARGS...: as it is for root, through sudo for everybody else.
can_be_root() { [[ $EUID -eq 0 ]] || command -v sudo >/dev/null; }
as_root() {
    if [[ $EUID -eq 0 ]]; then "$@"; else sudo "$@"; fi
}

# quietly NAME COMMAND ARGS...: the output goes to build/logs/NAME.log and is shown only when the command fails.
quietly() {
    local log=$logs/$1.log
    shift
    mkdir -p "$logs"
    if "$@" >"$log" 2>&1 </dev/null; then return 0; fi
    tail -n 200 "$log" >&2
    say "failed: $* (the end of ${log#"$repo/"} is above)"
    return 1
}

# The lock keeps two runs at once (`./run a | ./run b`) from building in one folder together.
locked() { (cd "$repo" && mkdir -p build && flock build/.lock "$@"); }
configure() { quietly "$1-configure" locked cmake --preset "$@"; }
build() { quietly "$1-build" locked cmake --build --preset "$@"; }

# Every file that is tracked or about to be, relative to the repository; in an unpacked archive, every file but the build.
source_files() {
    cd "$repo" || return
    # The owner of a checkout in a container is often another user, which git refuses unless told.
    if [[ -e .git ]] && command -v git >/dev/null; then
        git -c safe.directory="$repo" ls-files --cached --others --exclude-standard
    else
        find . -path ./build -prune -o -path ./.git -prune -o -type f -printf '%P\n'
    fi | while IFS= read -r file; do
        if [[ -e $file ]]; then printf '%s\n' "$file"; fi
    done
}
