#!/usr/bin/env bash
# test_thumbnailer.sh TREE: the previews of the file manager, made by a thumbnailing service that knows the program from
# its installed entry alone.
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need dbus-run-session gdbus update-mime-database identify
service=/usr/lib/$(uname -m)-linux-gnu/tumbler-1/tumblerd
[ -x "$service" ] || fail "The thumbnailing service tumbler is missing; ./test.sh installs it."
tree=$1/usr
entry=$tree/share/thumbnailers/kytstudio.thumbnailer

# ---- the entry

value() { sed -n "s/^$1=//p" "$entry"; }
[ -x "$tree/bin/$(value TryExec)" ] || fail "The program that the entry tries is not installed."
for file in "$tree"/share/mime/packages/*.xml; do
    for type in $(value MimeType | tr ';' ' '); do
        grep -q -F "type=\"$type\"" "$file" || fail "The file type $type is not declared."
    done
done

# ---- the files: drawings and a molfile, with a name that needs quoting

mkdir -p "$work/files" "$work/share/mime/packages" "$work/cache"
cp lib/benzene.kyf "$work/files/a library molecule.kyf"
cp data/caffeine.kyt "$work/files/drawing.kyt"
"$tree/bin/kytconvert" data/alanine.kyt -o "$work/files/molfile.mol" 2>/dev/null
echo 'KYTFILE broken' >"$work/files/broken.kyt"

# ---- the service's call line: its file has no extension

export PATH=$tree/bin:$PATH
read -r -a call <<<"$(value Exec)"
for i in "${!call[@]}"; do
    case ${call[i]} in
    %i) call[i]=$work/files/drawing.kyt ;;
    %o) call[i]=$work/preview ;;
    %s) call[i]=128 ;;
    esac
done
silent env -u DISPLAY "${call[@]}"
expect_equal "The preview" "$(identify -format '%m %wx%h' "$work/preview")" "PNG 128x128"

# ---- the service itself

cp /usr/share/mime/packages/freedesktop.org.xml "$tree"/share/mime/packages/*.xml "$work/share/mime/packages"
cp -r "$tree/share/thumbnailers" "$work/share"
export XDG_DATA_DIRS=$work/share XDG_DATA_HOME=$work/none XDG_CACHE_HOME=$work/cache PKGSYSTEM_ENABLE_FSYNC=0
silent update-mime-database "$work/share/mime"

# session FILE|TYPE...: asks the service for the previews; prints the size of each, or "none".
cat >"$work/session" <<'SESSION'
"$SERVICE" >/dev/null 2>&1 &
service=$!
gdbus wait --session --timeout 20 org.freedesktop.thumbnails.Thumbnailer1
for request in "$@"; do
    uri=file://${request%%|*}
    uri=${uri// /%20}
    gdbus call --session --dest org.freedesktop.thumbnails.Thumbnailer1 --object-path \
        /org/freedesktop/thumbnails/Thumbnailer1 --method org.freedesktop.thumbnails.Thumbnailer1.Queue \
        "['$uri']" "['${request##*|}']" normal default 0 >/dev/null
    preview=$XDG_CACHE_HOME/thumbnails/normal/$(printf %s "$uri" | md5sum | cut -d ' ' -f 1).png
    failure=$XDG_CACHE_HOME/thumbnails/fail
    for ((i = 0; i < 600; i++)); do # the service runs only while the processor is idle
        if [ -e "$preview" ]; then
            break
        fi
        sleep 0.1
        [ "$i" -gt 30 ] && [ -e "$failure" ] && break
    done
    identify -format '%m %wx%h\n' "$preview" 2>/dev/null || echo none
done
kill "$service"
SESSION
export SERVICE=$service
previews() { dbus-run-session -- bash "$work/session" "$@" 2>"$work/session.log"; }
workspace=application/x-kytstudio-workspace
expect_equal "The previews" "$(previews "$work/files/drawing.kyt|$workspace" \
    "$work/files/a library molecule.kyf|$workspace" "$work/files/molfile.mol|chemical/x-mdl-molfile" |
    tr '\n' ',')" "PNG 128x128,PNG 128x128,PNG 128x128,"
expect_equal "The preview of a broken file" "$(previews "$work/files/broken.kyt|$workspace")" "none"
