#!/usr/bin/env bash
# Takes the pictures of the documents anew, each in the light and in the dark theme: docs/pictures/NAME.png and
# NAME_dark.png. A picture that looks as before keeps its file.
#
# usage: pictures.sh [GALLERY]
set -euo pipefail
cd "$(dirname "$0")/.."
gallery=$(realpath "${1:-build/gallery/commondlg3_gallery}")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# The window's name in the gallery, and where it is another, the picture's.
pictures=(
    message_error message_warning message_yes_no message_check_box message_success message_information message_progress
    message_named_buttons message_support message_storm
    dialog_example page_example dialog_ask dialog_clipboard dialog_consent
    caption simple_message advanced_panel log
    preferences page_editor page_experimental page_result_saving page_search_dirs:search_directories
)

# What the gallery's own pictures lack: a page with what a user may have silenced, and other languages.
# shellcheck disable=SC2089,SC2090 # the quotation marks are JSON's
silenced='{"messages": [
  {"icon_type": 1, "button_type": 1, "answer": 1, "silenced_at": 1790000000, "main_message": "Replace the results of the last run?"},
  {"icon_type": 1, "silenced_at": 1793000000, "main_message": "Some samples were lost"},
  {"icon_type": 1, "silenced_at": 1794000000, "main_message": "The program was built without debug information"},
  {"icon_type": 3, "button_type": 3, "answer": 3, "silenced_at": 1795500000, "main_message": "Close the project while it is collecting?"}]}'
picture_of() { # file, options of the gallery...
    local file=$1
    shift
    "$gallery" "$@" >/dev/null &
    local window
    window=$(timeout 20 xdotool search --sync --onlyvisible --class gallery | tail -1)
    sleep 1 # until it is painted
    import -frame -window "$window" "$file"
    kill %1
    wait
}
export -f picture_of
# shellcheck disable=SC2090
export gallery silenced

# Where the pictures show a path, it is nobody's.
take() { # theme
    cd /usr/src
    HOME=/home/user "$gallery" --language en --theme "$1" --screenshots "$folder/$1" >/dev/null
    picture_of "$folder/$1/silenced_messages.png" --language en --theme "$1" --show page_silenced --data "$silenced"
    picture_of "$folder/$1/message_arabic.png" --language ar --theme "$1" --show message_check_box
    picture_of "$folder/$1/message_japanese.png" --language ja --theme "$1" --show message_check_box
}
export -f take
export folder

pictures+=(silenced_messages message_arabic message_japanese)
for theme in light dark; do
    scripts/with_display.sh bash -c "take $theme"
    ending=""
    [ "$theme" = light ] || ending=_dark
    for picture in "${pictures[@]}"; do
        new=$folder/new.png
        kept=docs/pictures/${picture#*:}$ending.png
        # Below the window's edge is a handle of the window manager's.
        # Few colours are enough for windows, and make a third of the size; dates would make each run another file.
        convert "$folder/$theme/${picture%:*}.png" -strip -gravity south -chop 0x5 +dither -colors 200 -define png:exclude-chunks=date,time \
            -define png:compression-level=9 PNG8:"$new"
        if ! [ -f "$kept" ] || [ "$(compare -metric AE -fuzz 2% "$kept" "$new" null: 2>&1 || true)" != 0 ]; then
            cp "$new" "$kept"
        fi
    done
done
du -sh docs/pictures
