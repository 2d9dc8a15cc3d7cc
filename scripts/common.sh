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
# With the command, and with the tests where they are there already: they need packages of their own.
configure_for_release() {
    local tests=OFF
    if [[ -e $repo/build/$1/tests/CTestTestfile.cmake ]]; then tests=ON; fi
    configure "$@" -DMORVANE_BUILD_TOOLS=ON -DMORVANE_BUILD_TESTS=$tests
}
build() { quietly "$1-build" locked cmake --build --preset "$@"; }

# download_i386 FOLDER NAME PACKAGE...: Debian's packages for i386, with all that they need, to FOLDER/archives. NAME is that
# of the logs.
#
# An apt of its own does it that believes in an empty i386 machine: that needs neither root nor i386 as a foreign architecture
# of this machine. It takes the machine's own mirror, of the main pocket only: the i386 lists of the others are at times older
# than their signature.
download_i386() {
    local state=$1 name=$2 release mirror
    shift 2
    # shellcheck source=/dev/null
    release=$(source /etc/os-release && [[ $ID == debian ]] && printf '%s' "${VERSION_CODENAME-}")
    [[ -n $release ]] || die "the i386 packages are Debian's, and this machine runs another system"
    mkdir -p "$state"/{lists,archives}/partial
    touch "$state/status"
    # shellcheck disable=SC2016 # apt's variables, not the shell's
    mirror=$(apt-get indextargets --format '$(RELEASE)|$(CODENAME)|$(COMPONENT)|$(REPO_URI)' 'Created-By: Packages' |
        awk -F'|' -v suite="$release" '($1 == suite || $2 == suite) && $3 == "main" { print $4; exit }')
    [[ -n $mirror ]] || die "no source of $release main among the package sources of apt"
    printf 'deb [arch=i386 signed-by=%s] %s %s main\n' \
        /usr/share/keyrings/debian-archive-keyring.gpg "$mirror" "$release" >"$state/sources.list"
    local apt=(apt-get -q -o APT::Architecture=i386 -o APT::Architectures::=i386 -o Dir::State="$state"
        -o Dir::State::status="$state/status" -o Dir::Cache="$state" -o Dir::Etc::sourcelist="$state/sources.list"
        -o Dir::Etc::sourceparts=- -o APT::Sandbox::User=)
    quietly "$name-update" "${apt[@]}" update &&
        quietly "$name-download" "${apt[@]}" install -y --no-install-recommends --download-only "$@"
}

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
