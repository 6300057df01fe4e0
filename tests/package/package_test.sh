#!/usr/bin/env bash
# One step of the packaging tests: package_test.sh STEP BUILD_FOLDER SCRATCH_FOLDER. Exit code 77: skipped.
set -u

step=$1
build=$2
scratch=$3
work=$scratch/$step # of this step alone
deb_folder=$scratch/deb

fail() {
    echo "FAILED: $*" >&2
    exit 1
}
skip() {
    echo "SKIPPED: $*" >&2
    exit 77
}
need() {
    local tool
    for tool in "$@"; do
        command -v "$tool" >/dev/null || skip "$tool is not installed"
    done
}
need_root() { [ "$(id -u)" -eq 0 ] || skip "only root can do this"; }

# What must be installed below the prefix, and nothing else; the pages of the help are counted apart.
expected_files() {
    cat <<'FILES'
bin/varlo-pro
share/applications/varlo-pro.desktop
share/doc/varlo-pro/changelog.gz
share/doc/varlo-pro/copyright
share/icons/hicolor/128x128/apps/varlo-pro.png
share/icons/hicolor/16x16/apps/varlo-pro.png
share/icons/hicolor/24x24/apps/varlo-pro.png
share/icons/hicolor/256x256/apps/varlo-pro.png
share/icons/hicolor/32x32/apps/varlo-pro.png
share/icons/hicolor/48x48/apps/varlo-pro.png
share/icons/hicolor/64x64/apps/varlo-pro.png
share/icons/hicolor/scalable/apps/varlo-pro.svg
share/man/man1/varlo-pro.1.gz
share/metainfo/example.thornbeck.varlo_pro.metainfo.xml
share/varlo-pro/Read Me.html
FILES
    [ ! -e "$build/Varlo Pro.chm" ] || echo "share/varlo-pro/Varlo Pro.chm"
}

check_tree() {
    local prefix=$1 difference
    difference=$(diff <(expected_files | LC_ALL=C sort) \
        <(cd "$prefix" && find . -type f ! -path './share/varlo-pro/help/*' -printf '%P\n' | LC_ALL=C sort)) ||
        fail "these files are missing (<) or too many (>):"$'\n'"$difference"
    diff -r "$build/help" "$prefix/share/varlo-pro/help" || fail "the pages of the help are not those that were built"
    cmp "$prefix/share/varlo-pro/Read Me.html" "$build/Read Me.html" || fail "the read-me page is not the one that was built"
    [ -x "$prefix/bin/varlo-pro" ] || fail "the program cannot be executed"
    find "$prefix" -perm /022 ! -type l | grep . && fail "others may write to these"
    return 0
}

the_package() {
    [ -d "$deb_folder" ] || skip "no package was made"
    local packages=("$deb_folder"/varlo-pro_*.deb)
    if [ ${#packages[@]} -ne 1 ] || [ ! -f "${packages[0]}" ]; then
        fail "there is not one package in $deb_folder"
    fi
    echo "${packages[0]}"
}

# Every path below a folder with all that a program could change of it.
fingerprint() { (cd "$1" && find . -printf '%P %y %m %U:%G %s %T@ %C@\n' | LC_ALL=C sort); }

# Runs a command in the background until a file exists, then ends it by its process id. The command must not end before.
run_until() {
    local file=$1 pid tries
    shift
    "$@" >"$work/output" 2>&1 &
    pid=$!
    for ((tries = 0; tries < 600; tries++)); do
        [ ! -e "$file" ] || break
        kill -0 "$pid" 2>/dev/null || fail "the program ended by itself: $(cat "$work/output")"
        sleep 0.1
    done
    kill "$pid" 2>/dev/null || fail "the program ended by itself: $(cat "$work/output")"
    wait "$pid"
    [ -e "$file" ] || fail "after a minute there is no $file: $(cat "$work/output")"
}

# Starts the program twice, new and with a profile; $1 is its home folder, the rest is the command.
start_in_home() {
    local home=$1 data=$1/data/Varlo\ Pro stray
    shift
    run_until "$data/profiles" "$@"
    mkdir -p "$data/profiles/News/lists"
    printf '[Profiles]\r\nAutoStart=1\r\nProfileCurrent=0\r\n' >"$data/global.ini"
    printf 'ann@example.org\r\n' >"$data/profiles/News/lists/News.vlo"
    chown -R --reference="$home" "$home"
    run_until "$data/profiles/News/logs/StatusLog.txt" "$@"
    grep -q 'SESSION STARTED' "$data/profiles/News/logs/StatusLog.txt" || fail "the program did not open the profile"
    stray=$(cd "$home" && find . -type f ! -path './data/Varlo Pro/*' ! -path './cache/*')
    [ -z "$stray" ] || fail "the program wrote elsewhere: $stray"
}

user_environment() {
    local home=$1
    environment=(env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen HOME="$home"
        XDG_DATA_HOME="$home/data" XDG_CACHE_HOME="$home/cache" XDG_CONFIG_HOME="$home/config" XDG_RUNTIME_DIR="$home/run")
    mkdir -p "$home/run" && chmod 700 "$home/run"
}

empty_dpkg_root() {
    mkdir -p "$1/var/lib/dpkg/info" "$1/var/lib/dpkg/updates"
    : >"$1/var/lib/dpkg/status"
}

# dpkg in a root folder of the test's own, whose database knows of no other package.
dpkg_in() {
    local root=$1
    shift
    dpkg --root="$root" --log=/dev/null --force-depends --force-not-root "$@" >"$work/dpkg" 2>&1 || fail "dpkg: $(cat "$work/dpkg")"
}

installs_every_file() {
    need gzip
    umask 022
    DESTDIR=$work cmake --install "$build" --prefix /usr >"$work.log" 2>&1 || fail "$(cat "$work.log")"
    check_tree "$work/usr"
    gzip -t "$work/usr/share/man/man1/varlo-pro.1.gz" || fail "the manual page is damaged"
}

desktop_files_are_valid() {
    need desktop-file-validate appstreamcli man gzip
    local complaints
    DESTDIR=$work cmake --install "$build" --prefix /usr >"$work.log" 2>&1 || fail "$(cat "$work.log")"
    complaints=$(desktop-file-validate "$work/usr/share/applications/varlo-pro.desktop" 2>&1)
    [ -z "$complaints" ] || fail "desktop entry: $complaints"
    appstreamcli validate --no-net "$work"/usr/share/metainfo/*.metainfo.xml || fail "metainfo"
    complaints=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$work/usr/share/man/man1/varlo-pro.1.gz" 2>&1 >/dev/null)
    [ -z "$complaints" ] || fail "manual page: $complaints"
}

package_is_made() {
    need cpack dpkg-deb dpkg-shlibdeps file gzip
    rm -rf "$deb_folder"
    (cd "$work" && umask 022 && cpack -G DEB --config "$build/CPackConfig.cmake" -B "$deb_folder") >"$work/log" 2>&1 ||
        fail "$(cat "$work/log")"
    the_package
}

package_holds_every_file() {
    local package depends field
    package=$(the_package) || exit "$?"
    dpkg-deb --contents "$package" | awk '$2 != "root/root" { print; wrong = 1 } END { exit wrong }' || fail "these do not belong to root"
    dpkg-deb -x "$package" "$work" || fail "the package cannot be unpacked"
    check_tree "$work/usr"
    [ "$(cd "$work" && echo ./*)" = ./usr ] || fail "there is more than /usr: $(cd "$work" && echo ./*)"
    depends=$(dpkg-deb -f "$package" Depends)
    for field in libc6 libqt6core6 libqt6gui6 libqt6widgets6 libqt6network6 libqt6svg6; do
        grep -qE "(^|, )$field( \(|,|$)" <<<"$depends" || fail "the package does not depend on $field: $depends"
    done
    [ "$(dpkg-deb -f "$package" Package)" = varlo-pro ] || fail "the name of the package"
    for field in Maintainer Section Description Installed-Size Homepage; do
        [ -n "$(dpkg-deb -f "$package" $field)" ] || fail "the package has no $field"
    done
    dpkg-deb -I "$package"
}

# The installed tree takes its place in /usr, over the machine's own and read-only, in a name space of the test's own.
installed_program_writes_to_the_users_folder_only() {
    need_root
    need unshare mount dpkg
    local root=$work/root home=$work/home package before environment
    package=$(the_package) || exit "$?"
    empty_dpkg_root "$root"
    dpkg_in "$root" -i "$package"
    before=$(fingerprint "$root")
    mkdir -p "$home"
    user_environment "$home"
    unshare --mount mount -t overlay overlay -o "lowerdir=$root/usr:/usr" /usr 2>"$work/mount" ||
        skip "no overlay file system can be mounted here: $(cat "$work/mount")"
    # Root could write to its folder if the file system let it: the program must decide by the place.
    # shellcheck disable=SC2016  # the inner shell has these arguments
    start_in_home "$home" unshare --mount sh -c \
        'mount -t overlay overlay -o "lowerdir=$0/usr:/usr" /usr && exec "$@"' "$root" "${environment[@]}" /usr/bin/varlo-pro
    [ "$(fingerprint "$root")" = "$before" ] || fail "the installed tree has changed"
}

unpacked_program_needs_no_root() {
    local root=$work/root home=$work/home package before environment as_user=()
    package=$(the_package) || exit "$?"
    dpkg-deb -x "$package" "$root" || fail "the package cannot be unpacked"
    mkdir -p "$home"
    user_environment "$home"
    if [ "$(id -u)" -eq 0 ]; then
        need setpriv
        chown -R nobody "$home"
        as_user=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
        "${as_user[@]}" test -x "$root/usr/bin/varlo-pro" || skip "the user nobody cannot reach $root"
    else
        chmod -R a-w "$root"
    fi
    before=$(fingerprint "$root")
    start_in_home "$home" "${as_user[@]}" "${environment[@]}" "$root/usr/bin/varlo-pro"
    [ "$(fingerprint "$root")" = "$before" ] || fail "the unpacked tree has changed"
    chmod -R u+w "$root"
}

removal_leaves_nothing() {
    need_root
    need dpkg
    local root=$work/root package left
    package=$(the_package) || exit "$?"
    empty_dpkg_root "$root"
    dpkg_in "$root" -i "$package"
    check_tree "$root/usr"
    dpkg_in "$root" --purge varlo-pro
    left=$(cd "$root" && find . -mindepth 1 ! -path './var*')
    [ -z "$left" ] || fail "left behind: $left"
    [ ! -e "$root/var/lib/dpkg/info/varlo-pro.list" ] || fail "dpkg still knows the package"
}

[ "$(type -t "$step")" = function ] || fail "there is no step $step"
rm -rf "$work"
mkdir -p "$work" || fail "cannot make $work"
"$step"
