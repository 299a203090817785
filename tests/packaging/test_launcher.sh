#!/usr/bin/env bash
# test_launcher.sh TREE: the launcher, with a stand-in for the program that tells where and how it was started.
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need setpriv
chmod 755 "$work"

# install FOLDER: the launcher and what it needs to find, with two translations.
install() {
    mkdir -p "$1/bin" "$1/libexec/kytstudio" "$1/share/kytstudio/translations"
    cp "$tree/usr/bin/kytstudio" "$1/bin"
    local name
    for name in icons lib data; do
        mkdir "$1/share/kytstudio/$name"
        echo "$name of $1" >"$1/share/kytstudio/$name/which"
    done
    touch "$1/share/kytstudio/translations/kytstudio.de.qm" "$1/share/kytstudio/translations/kytstudio.fr.qm"
    cat >"$1/libexec/kytstudio/kytstudio" <<'PROGRAM'
#!/bin/sh
printf '%s\n' "$PWD" "$QT_QPA_PLATFORM" "$@"
[ -z "${KYTSTUDIO_OPEN-}" ] || printf 'open: %s\n' "$KYTSTUDIO_OPEN"
[ -z "${PROCESS-}" ] || echo $$ >"$PROCESS"
exit "${STATUS:-0}"
PROGRAM
    chmod 755 "$1/libexec/kytstudio/kytstudio"
}

# start [NAME=VALUE...] COMMAND...: starts in a fresh environment; sets status, and leaves what was said in out and err.
start() {
    status=0
    env -i PATH="$PATH" "$@" >"$work/out" 2>"$work/err" || status=$?
}

expect_success() {
    [ $status -eq 0 ] || fail "$1: it ended with status $status: $(cat "$work/err")"
    [ ! -s "$work/err" ] || fail "$1: it complained: $(cat "$work/err")"
}

# expect_failure WHAT WORDS
expect_failure() {
    expect_equal "$1: the status" "$status" 1
    grep -q -F -- "$2" "$work/err" || fail "$1: no sentence with \"$2\", but: $(cat "$work/err")"
    [ ! -s "$work/out" ] || fail "$1: the program was started."
}

# expect_links FOLDER INSTALLED
expect_links() {
    local name
    for name in icons lib data; do
        expect_equal "The link $name" "$(readlink "$1/$name")" "$2/share/kytstudio/$name"
    done
    for name in kytstudio.de.qm kytstudio.fr.qm; do
        expect_equal "The link $name" "$(readlink "$1/$name")" "$2/share/kytstudio/translations/$name"
    done
}

tree=$1
first="$work/first place"
second=$work/second
install "$first"
install "$second"
home="$work/a home"
mkdir "$home"
folder=$home/.local/share/kytstudio

start HOME="$home" "$first/bin/kytstudio" -style 'two words' ''
expect_success "A first start"
expect_equal "What the program was given" "$(cat "$work/out")" "$folder
xcb
-style
two words"
expect_equal "The number of arguments" "$(wc -l <"$work/out")" 5
expect_links "$folder" "$first"
expect_equal "The mode of a folder that had to be made" "$(stat -c %a "$home/.local/share")" 700

# expect_opened WHAT FILE [ARGUMENT...]: the file that the program is told to open, and its arguments.
expect_opened() {
    expect_success "$1"
    expect_equal "$1: what the program was given" "$(sed 1,2d "$work/out")" "$(
        [ $# -lt 3 ] || printf '%s\n' "${@:3}"
        [ -z "$2" ] || printf 'open: %s' "$2"
    )"
}
start HOME="$home" "$first/bin/kytstudio" -style fusion -- "/tmp/a b.kyt"
expect_opened "A file behind --" "/tmp/a b.kyt" -style fusion
start HOME="$home" "$first/bin/kytstudio" -- /tmp/first.kyt /tmp/second.kyt
expect_opened "Two files" /tmp/first.kyt
# shellcheck disable=SC2016  # the inner shell expands it
start HOME="$home" sh -c 'cd "$1" && exec "$2" -- -odd.kyt' sh "$work" "$first/bin/kytstudio"
expect_opened "A file in the folder of the start" "$work/-odd.kyt"
start HOME="$home" "$first/bin/kytstudio" --
expect_opened "No file behind --" ""
start HOME="$home" KYTSTUDIO_OPEN=/tmp/old.kyt "$first/bin/kytstudio" -- --
expect_opened "A file named --" "$PWD/--"

start HOME="$home" STATUS=7 QT_QPA_PLATFORM=offscreen "$first/bin/kytstudio"
expect_equal "The program's status" $status 7
expect_equal "The chosen platform" "$(sed -n 2p "$work/out")" offscreen

XDG_DATA_HOME="" HOME=$home PROCESS=$work/process "$first/bin/kytstudio" >/dev/null &
launcher=$!
wait $launcher
expect_equal "The process, which signals are sent to" "$(cat "$work/process")" $launcher

start HOME="$home" "$second/bin/kytstudio"
expect_success "A start after a move"
expect_links "$folder" "$second"
[ -z "$(find "$first/share" "$second/share" -type l)" ] || fail "A link was made among the installed files."

rm "$second/share/kytstudio/translations/kytstudio.fr.qm"
start HOME="$home" "$second/bin/kytstudio"
expect_success "A start after a translation has gone"
[ ! -L "$folder/kytstudio.fr.qm" ] || fail "The link to a translation that has gone is still there."
[ -L "$folder/kytstudio.de.qm" ] || fail "The link to a translation that is still there has gone."

rm "$folder/data" "$folder/kytstudio.de.qm"
mkdir "$folder/data"
echo mine | tee "$folder/data/drawing.kyt" >"$folder/kytstudio.de.qm"
start HOME="$home" "$first/bin/kytstudio"
expect_equal "A start with files of the user's own: the status" $status 0
expect_equal "A folder of the user's own" "$(cat "$folder/data/drawing.kyt")" mine
expect_equal "A file of the user's own" "$(cat "$folder/kytstudio.de.qm")" mine
expect_equal "What is said about them" "$(cat "$work/err")" \
    "kytstudio: warning: $folder/data is not a link: used instead of $first/share/kytstudio/data
kytstudio: warning: $folder/kytstudio.de.qm is not a link: used instead of \
$first/share/kytstudio/translations/kytstudio.de.qm"
expect_equal "The link beside them" "$(readlink "$folder/lib")" "$first/share/kytstudio/lib"

start HOME="$home" XDG_DATA_HOME="$work/other data" "$first/bin/kytstudio"
expect_success "A data folder by XDG_DATA_HOME"
expect_links "$work/other data/kytstudio" "$first"
start XDG_DATA_HOME="$work/other data" "$first/bin/kytstudio"
expect_success "No HOME, where XDG_DATA_HOME is enough"
start HOME="$home" XDG_DATA_HOME=relative "$first/bin/kytstudio"
expect_equal "The folder with a relative XDG_DATA_HOME" "$(head -n 1 "$work/out")" "$folder"

start "$first/bin/kytstudio"
expect_failure "No HOME" "neither HOME nor XDG_DATA_HOME is set"
start HOME=relative "$first/bin/kytstudio"
expect_failure "A relative HOME" "neither HOME nor XDG_DATA_HOME is set to an absolute path"

touch "$work/file"
start XDG_DATA_HOME="$work/file" "$first/bin/kytstudio"
expect_failure "A file in the way of the folder" "cannot create folder $work/file/kytstudio"

# Root may write anywhere; nobody may not.
as_nobody=()
[ "$(id -u)" -ne 0 ] || as_nobody=(setpriv --reuid=65534 --regid=65534 --clear-groups)
mkdir -p "$work/closed" "$work/read only/kytstudio"
chmod 555 "$work/closed" "$work/read only/kytstudio"
start XDG_DATA_HOME="$work/closed" "${as_nobody[@]}" "$first/bin/kytstudio"
expect_failure "A place where no folder can be made" "cannot create folder $work/closed/kytstudio"
start XDG_DATA_HOME="$work/read only" "${as_nobody[@]}" "$first/bin/kytstudio"
expect_failure "A folder that is read-only" "cannot write to folder $work/read only/kytstudio"

for option in --help --version; do
    start "$first/bin/kytstudio" -style fusion $option
    expect_success "$option without a home"
done
expect_equal "The version" "$(cat "$work/out")" "KytStudio $2"

ln -s "$first/bin/kytstudio" "$work/shortcut"
start HOME="$home" XDG_DATA_HOME="$work/by shortcut" "$work/shortcut"
expect_success "A start by a link to the launcher"
expect_links "$work/by shortcut/kytstudio" "$first"
start PATH="$first/bin:$PATH" XDG_DATA_HOME="$work/by name" sh -c 'cd / && exec kytstudio'
expect_success "A start by name from another folder"
expect_links "$work/by name/kytstudio" "$first"
# shellcheck disable=SC2016  # the inner shell expands it
start XDG_DATA_HOME="$work/by sh" sh -c 'cd "$1/bin" && exec sh ./kytstudio' sh "$first"
expect_success "A start by a relative name"
expect_links "$work/by sh/kytstudio" "$first"

install "$work/own"
start XDG_DATA_HOME="$work/own/share" "$work/own/bin/kytstudio"
expect_success "An installation below the user's own data folder"
[ -f "$work/own/share/kytstudio/icons/which" ] || fail "The installed pictures are gone."
[ -e "$work/own/share/kytstudio/kytstudio.de.qm" ] || fail "The translation is not in the working directory."

# Two installations take turns, so that every start has every link to set.
starts=()
for _ in $(seq 20); do
    for place in "$first" "$second"; do
        env -i PATH="$PATH" XDG_DATA_HOME="$work/crowd" "$place/bin/kytstudio" >>"$work/crowd.out" 2>>"$work/crowd.err" &
        starts+=($!)
    done
done
failed=0
for process in "${starts[@]}"; do
    wait "$process" || failed=$((failed + 1))
done
expect_equal "How many of many starts at once failed" $failed 0
[ ! -s "$work/crowd.err" ] || fail "One of many starts at once complained: $(cat "$work/crowd.err")"
for name in icons lib data; do
    [ -f "$work/crowd/kytstudio/$name/which" ] || fail "After many starts at once, the link $name leads nowhere."
done
expect_equal "What many starts at once leave" "$(find "$work/crowd/kytstudio" -mindepth 1 -printf '%f\n' | sort | xargs)" \
    "data icons kytstudio.de.qm kytstudio.fr.qm lib"

rm "$second/libexec/kytstudio/kytstudio"
start HOME="$home" "$second/bin/kytstudio"
expect_failure "A missing program" "editor not found"
rm -r "$first/share"
start HOME="$home" "$first/bin/kytstudio"
expect_failure "Missing data" "icons and library not found"
