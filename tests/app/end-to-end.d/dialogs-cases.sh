# The dialogs' cases: go to, find (hex, text, cancel), font and about. Sourced by `case` with its
# helpers defined; runs the case when NAME is one of these and ends the script, else returns.

prompt_class="Tolmo.PromptDialog"
search_class="Tolmo.SearchDialog"
font_class="Tolmo.FontDialog"
about_class="Tolmo.AboutDialog"
goto_title="$(tolmo_string en-US dialog.goto.title)"
find_title="$(tolmo_string en-US dialog.search.title)"
font_title="$(tolmo_string en-US dialog.font.title)"
about_title="$(tolmo_string en-US dialog.about.title)"
prompt_edit=3002
query_box=3104

# "enabled|disabled TEXT" of a dialog's control.
control_state() { # CLASS TITLE ID
  tolmo_drive control "$1" "$2" "$3" "$TOLMO_TIMEOUT_MS"
}

control_text() { # CLASS TITLE ID
  local state
  state="$(control_state "$@")" || return 1
  sed 's/^[a-z]* //' <<<"$state"
}

control_enabled() { # CLASS TITLE ID
  [[ "$(control_state "$@")" == enabled* ]]
}

control_disabled() { # CLASS TITLE ID
  [[ "$(control_state "$@")" == disabled* ]]
}

# Waits for a dialog to stand with the keyboard in its control of class CHILD.
wait_dialog() { # CLASS TITLE CHILD
  tolmo_drive wait "$1" "$2" "$TOLMO_TIMEOUT_MS" >/dev/null || fail "no dialog \"$2\""
  tolmo_drive wait-focus "$1" "$2" "$3" "$TOLMO_TIMEOUT_MS" >/dev/null || fail "the keys do not reach the $3 of \"$2\""
}

dialog_gone() { # CLASS TITLE
  tolmo_drive wait-gone "$1" "$2" "$TOLMO_TIMEOUT_MS" >/dev/null
}

dialog_stands() { # CLASS TITLE
  tolmo_drive wait "$1" "$2" 2000 >/dev/null
}

# The caret's offset as the go-to prompt offers it, the prompt closed again with Esc.
# Waits for the view to have the keys before a shortcut is typed.
view_has_keys() {
  tolmo_has_focus "$title" "$TOLMO_TIMEOUT_MS" || fail "the view does not have the keys (${FUNCNAME[1]})"
}

caret_offset() {
  view_has_keys
  tolmo_keys ctrl+g
  wait_dialog "$prompt_class" "$goto_title" Edit
  control_text "$prompt_class" "$goto_title" "$prompt_edit" || fail "cannot read the go-to prompt"
  tolmo_keys Escape
  dialog_gone "$prompt_class" "$goto_title" || fail "Esc did not close the go-to prompt"
  tolmo_has_focus "$title" "$TOLMO_TIMEOUT_MS" || fail "the view did not get the keys back after the prompt"
}

open_find() {
  view_has_keys
  tolmo_keys ctrl+f
  wait_dialog "$search_class" "$find_title" Edit
}

# Waits until the request the dialog runs has ended: its query box takes input again.
wait_search_done() {
  tolmo_drive wait-idle "$search_class" "$find_title" "$TOLMO_TIMEOUT_MS" >/dev/null || fail "the find dialog hangs"
  tolmo_poll_seconds 60 control_enabled "$search_class" "$find_title" "$query_box" || fail "the search did not end"
}

close_find() {
  tolmo_keys Escape
  dialog_gone "$search_class" "$find_title" || fail "Esc did not close the idle find dialog"
  tolmo_has_focus "$title" "$TOLMO_TIMEOUT_MS" || fail "the view did not get the keys back after the find dialog"
}

# Types into the focused control as a user would; text beyond the keyboard comes by the clipboard.
type_text() {
  xdotool type --delay 40 -- "$1"
}

paste_text() {
  printf '%s' "$1" | xclip -i -selection clipboard >/dev/null 2>&1
  tolmo_poll_seconds 5 tolmo_clipboard_is "$1" || fail "cannot put \"$1\" on the clipboard"
  tolmo_keys ctrl+v
}

# Finds QUERY with KEY (Return for Next, alt+p for Previous) in a fresh run of the dialog, closes it
# and expects the selection to copy as COPY with the caret at OFFSET.
find_hit() { # QUERY KEY COPY OFFSET
  open_find
  type_text "$1"
  tolmo_keys "$2"
  wait_search_done
  close_find
  local copied offset
  copied="$(tolmo_copy_selection)" || fail "\"$1\": Ctrl+C copied nothing, so nothing was selected"
  [ "$copied" = "$3" ] || fail "\"$1\": the selection copied \"$copied\", not \"$3\""
  offset="$(caret_offset)"
  [ "$offset" = "$4" ] || fail "\"$1\": the caret is at $offset, not $4"
  echo "hit: \"$1\" with $2 at $offset"
}

# A message box of CAPTION saying TEXT, owned by a window of OWNER_CLASS, photographed for its icon.
check_box() { # CAPTION TEXT OWNER_CLASS ICON SHOT
  local out rect text owner
  out="$(tolmo_drive wait "$TOLMO_BOX_CLASS" "$1" "$TOLMO_TIMEOUT_MS")" || fail "no box \"$1\" saying \"$2\""
  rect="$(head -n 1 <<<"$out")"
  text="$(sed -n 2p <<<"$out")"
  [ "$text" = "$2" ] || fail "the box says \"$text\", not \"$2\""
  owner="$(tolmo_drive owner "$1" "$TOLMO_TIMEOUT_MS")"
  [[ "$owner" == "visible $3 "* ]] || fail "the box \"$2\" is owned by \"$owner\", not a $3"
  if [ "$4" != "-" ]; then
    tolmo_drive repaint "$TOLMO_BOX_CLASS" "$1" "$TOLMO_TIMEOUT_MS" >/dev/null 2>&1 || true
    tolmo_screenshot "$rect" "$TOLMO_SHOTS/$5" 10 || fail "no picture of the box"
    box_icon_is "$4" "$TOLMO_SHOTS/$5" || fail "the box \"$2\" has no $4 icon"
  fi
  tolmo_drive dismiss "$1" "$TOLMO_TIMEOUT_MS" >/dev/null || fail "cannot dismiss \"$2\""
  tolmo_drive wait-gone "$TOLMO_BOX_CLASS" "$1" "$TOLMO_TIMEOUT_MS" >/dev/null || fail "the box \"$2\" stays"
}

dialog_rect() { # CLASS TITLE
  tolmo_drive wait "$1" "$2" "$TOLMO_TIMEOUT_MS" | head -n 1
}

dialog_shot() { # CLASS TITLE FILE
  tolmo_drive repaint "$1" "$2" "$TOLMO_TIMEOUT_MS" >/dev/null 2>&1 || true
  tolmo_screenshot "$(dialog_rect "$1" "$2")" "$TOLMO_SHOTS/$3" 10 || fail "no picture of \"$2\""
}

# The screen rectangle of a dialog's control: "left top width height" of its client area.
control_rect() { # CLASS TITLE ID
  tolmo_drive children "$1" "$2" "$TOLMO_TIMEOUT_MS" | awk -v id="$3" '$2 == id { print $4, $5, $6, $7; exit }'
}

no_box() { # CAPTION SECONDS
  ! tolmo_drive wait "$TOLMO_BOX_CLASS" "$1" "$(($2 * 1000))" >/dev/null 2>&1
}

dialogs_case_ran=yes
case "$name" in
  go-to)
    # Ctrl+G offers the caret, " 0X1f " goes to 31, Esc cancels, "g" and 17 digits are refused with
    # the caret left, and an offset past the end stops on the last byte.
    file="$work/counting.bin"
    make_counting_file "$file"
    open_file "$file"
    calibrate
    [ "$(caret_offset)" = "0" ] || fail "the prompt does not offer the caret 0"
    tolmo_keys ctrl+g
    wait_dialog "$prompt_class" "$goto_title" Edit
    dialog_shot "$prompt_class" "$goto_title" prompt.png
    # The offered text is selected: typing replaces it.
    type_text " 0X1f "
    tolmo_keys Return
    dialog_gone "$prompt_class" "$goto_title" || fail "OK did not close the prompt"
    tolmo_has_focus "$title" "$TOLMO_TIMEOUT_MS" || fail "the view did not get the keys back after the prompt"
    expect_caret 1 15 "go to \" 0X1f \""
    [ "$(caret_offset)" = "1F" ] || fail "the prompt does not offer the caret 1F"
    for bad in g 10000000000000000; do
      tolmo_keys ctrl+g
      wait_dialog "$prompt_class" "$goto_title" Edit
      type_text "$bad"
      tolmo_keys Return
      check_box "$goto_title" "$(tolmo_string en-US error.goto_invalid)" "$TOLMO_MAIN_CLASS" stop "goto-$bad.png"
      ! dialog_stands "$prompt_class" "$goto_title" || fail "the prompt came back after \"$bad\""
      tolmo_focus "$title" || fail "the view did not get the keys back after the box"
      [ "$(caret_offset)" = "1F" ] || fail "the caret moved on \"$bad\""
    done
    tolmo_keys ctrl+g
    wait_dialog "$prompt_class" "$goto_title" Edit
    type_text "FFFFFFFF"
    tolmo_keys Return
    dialog_gone "$prompt_class" "$goto_title" || fail "OK did not close the prompt"
    [ "$(caret_offset)" = "FFF" ] || fail "an offset past the end did not stop on the last byte"
    close_program "$title" "$pid"
    ;;

  find-hex)
    # Hex queries through Ctrl+F: Next and Previous through overlapping hits, each checked by Ctrl+C
    # and the caret; the not-found and invalid-hex boxes owned by the dialog, which stays; the
    # history offered again in the query box after the program restarts.
    file="$work/hits.bin"
    printf '\x00\xaa\xaa\xaa\x00\xaa\xaa\x00\x4a\x4b\x11\x22' >"$file"
    open_file "$file"
    find_hit "AA AA" Return "AA AA" 1
    # The hit stays selected, so Next goes on from one past its first byte: overlapping hits.
    find_hit "aa aa" Return "AA AA" 2
    find_hit "AAAA" Return "AA AA" 5
    find_hit "AA  AA" alt+p "AA AA" 2
    find_hit "4A 4b" Return "4A 4B" 8
    open_find
    dialog_shot "$search_class" "$find_title" find-dialog.png
    type_text "12 34"
    tolmo_keys Return
    check_box "$find_title" "$(tolmo_string en-US error.search_not_found)" "$search_class" - not-found.png
    dialog_stands "$search_class" "$find_title" || fail "the not-found box closed the dialog"
    wait_search_done
    tolmo_drive wait-focus "$search_class" "$find_title" Edit "$TOLMO_TIMEOUT_MS" >/dev/null ||
      fail "the query box did not get the keys back after the request"
    # The query is selected again after a request: typing replaces it.
    type_text "4A 4"
    tolmo_keys Return
    check_box "$find_title" "$(tolmo_string en-US error.search_invalid_hex)" "$search_class" stop invalid-hex.png
    dialog_stands "$search_class" "$find_title" || fail "the invalid-hex box closed the dialog"
    wait_search_done
    # The query box takes 12,287 characters of hex, 4,096 bytes written as pairs with separators.
    paste_text "$(printf 'A%.0s' $(seq 12300))"
    query_length() { # EXPECTED
      [ "$(control_text "$search_class" "$find_title" "$query_box" | tr -d '\n' | wc -m)" -eq "$1" ]
    }
    tolmo_poll_seconds 10 query_length 12287 || fail "the hex query box does not stop at 12287 characters"
    close_find
    [ "$(tolmo_copy_selection)" = "4A 4B" ] || fail "a refused request changed the selection"
    [ "$(caret_offset)" = "8" ] || fail "a refused request moved the caret"
    close_program "$title" "$pid"
    tr -d '\r' <"$(tolmo_settings_file)" | grep -qF '{"kind": "hex", "query": "12 34"}, {"kind": "hex", "query": "4A 4b"}' ||
      fail "the history is not in the settings file, newest first"
    open_file "$file"
    open_find
    tolmo_keys Down
    tolmo_poll_seconds 10 eval '[ "$(control_text "$search_class" "$find_title" "$query_box")" = "12 34" ]' ||
      fail "the newest hex query is not offered first after the restart: \"$(control_text "$search_class" "$find_title" "$query_box")\""
    tolmo_keys Down
    tolmo_poll_seconds 10 eval '[ "$(control_text "$search_class" "$find_title" "$query_box")" = "4A 4b" ]' ||
      fail "the second hex query is not offered next"
    tolmo_keys Return
    wait_search_done
    close_find
    [ "$(tolmo_copy_selection)" = "4A 4B" ] || fail "the query taken from the history did not find 4A 4B"
    [ "$(caret_offset)" = "8" ] || fail "the query taken from the history did not put the caret on 8"
    close_program "$title" "$pid"
    ;;

  find-text)
    # A text query in Shift_JIS on a Japanese sample: the type box switched to text, the query pasted,
    # Next through both hits; the text history offered in the next run of the dialog.
    file="$work/japanese.bin"
    { printf 'ABC'; printf '日本語のテキスト、日本語です' | iconv -f UTF-8 -t SHIFT_JIS; printf 'XYZ'; } >"$file"
    open_file "$file"
    tolmo_keys "alt+$(access_key en-US menu.settings)" "$(access_key en-US menu.view.encoding)" \
      "$(access_key en-US menu.view.encoding.japanese)" Return
    tolmo_idle "$title"
    tolmo_poll_seconds 10 has_setting '      "code": "cp932"' || fail "Shift_JIS was not chosen"
    open_find
    # From the query box back to the type box, which starts on hex, and on to text.
    tolmo_keys shift+Tab Down Tab
    tolmo_drive wait-focus "$search_class" "$find_title" Edit "$TOLMO_TIMEOUT_MS" >/dev/null ||
      fail "Tab did not bring the keys back to the query box"
    # In Shift_JIS a text query stops at 2,048 characters.
    paste_text "$(printf 'x%.0s' $(seq 3000))"
    query_length() { # EXPECTED
      [ "$(control_text "$search_class" "$find_title" "$query_box" | tr -d '\n' | wc -m)" -eq "$1" ]
    }
    tolmo_poll_seconds 10 query_length 2048 || fail "the text query box does not stop at 2048 characters in Shift_JIS"
    tolmo_keys End shift+Home
    paste_text "日本語"
    tolmo_poll_seconds 10 eval '[ "$(control_text "$search_class" "$find_title" "$query_box")" = "日本語" ]' ||
      fail "the query box holds \"$(control_text "$search_class" "$find_title" "$query_box")\" after the paste"
    dialog_shot "$search_class" "$find_title" text-query.png
    tolmo_keys Return
    wait_search_done
    close_find
    [ "$(tolmo_copy_selection)" = "93 FA 96 7B 8C EA" ] || fail "the first hit is not the Shift_JIS bytes of the query"
    [ "$(caret_offset)" = "3" ] || fail "the first hit is not at 3"
    open_find
    tolmo_keys shift+Tab Down Tab Down
    tolmo_poll_seconds 10 eval '[ "$(control_text "$search_class" "$find_title" "$query_box")" = "日本語" ]' ||
      fail "the text history does not offer the query: \"$(control_text "$search_class" "$find_title" "$query_box")\""
    tolmo_keys Return
    wait_search_done
    close_find
    [ "$(tolmo_copy_selection)" = "93 FA 96 7B 8C EA" ] || fail "the second hit is not the query's bytes"
    [ "$(caret_offset)" = "15" ] || fail "the second hit is not at 0x15"
    close_program "$title" "$pid"
    ;;

  find-cancel)
    # A search over an 8 GiB sparse file shows its progress and ends within a fraction of a second of
    # Esc: the dialog stays, no box is shown, and the caret stays.
    file="$work/sparse.bin"
    truncate -s 8G "$file"
    open_file "$file"
    status="$(tolmo_status_rect "$title")"
    tolmo_shot "$status" "$TOLMO_SHOTS/status-idle.png"
    open_find
    type_text "12 34"
    tolmo_keys Return
    tolmo_poll_seconds 20 control_disabled "$search_class" "$find_title" "$query_box" ||
      fail "no search seen running"
    tolmo_screenshot "$status" "$TOLMO_SHOTS/status-searching.png" 10 || true
    differs_from "$TOLMO_SHOTS/status-idle.png" 50 "$TOLMO_SHOTS/status-searching.png" ||
      defect "the status bar did not change while searching"
    pressed=$(date +%s%N)
    tolmo_keys Escape
    tolmo_poll_seconds 20 control_enabled "$search_class" "$find_title" "$query_box" || fail "Esc did not end the search"
    ended=$(date +%s%N)
    elapsed=$(((ended - pressed) / 1000000))
    echo "Esc to the end of the search, seen from outside: $elapsed ms"
    dialog_stands "$search_class" "$find_title" || fail "Esc during the search closed the dialog"
    # Had the search run on, it would have ended in a not-found box.
    no_box "$find_title" 5 || fail "a box was shown after Esc"
    [ "$elapsed" -lt 3000 ] || fail "the search took $elapsed ms to end after Esc"
    close_find
    [ "$(caret_offset)" = "0" ] || fail "the cancelled search moved the caret"
    close_program "$title" "$pid"
    ;;

  font-dialog)
    # Settings > Font: the last fixed-pitch family and 28 points; the settings file and the row
    # height change.
    open_file "$sample"
    calibrate
    first_height="$row_height"
    tolmo_keys "alt+$(access_key en-US menu.settings)" "$(access_key en-US menu.settings.font)"
    wait_dialog "$font_class" "$font_title" ComboBox
    dialog_shot "$font_class" "$font_title" font-dialog.png
    first_family="$(control_text "$font_class" "$font_title" 3302)"
    # Made smaller, the dialog keeps OK and Cancel in its bottom right corner.
    read -r font_x font_y font_width font_height <<<"$(dialog_rect "$font_class" "$font_title")"
    read -r ok_left ok_top _ _ <<<"$(control_rect "$font_class" "$font_title" 1)"
    read -r cancel_left cancel_top _ _ <<<"$(control_rect "$font_class" "$font_title" 2)"
    # Its bottom right corner dragged up and left, as a user resizes it.
    corner_x=$((font_x + font_width - 2)); corner_y=$((font_y + font_height - 2))
    tolmo_drag "$corner_x" "$corner_y" $((corner_x - 80)) $((corner_y - 60))
    moved() {
      read -r _ _ new_width new_height <<<"$(dialog_rect "$font_class" "$font_title")"
      [ "$new_width" -lt "$font_width" ] || return 1
      read -r new_left new_top _ _ <<<"$(control_rect "$font_class" "$font_title" 2)"
      [ $((cancel_left - new_left)) -eq $((font_width - new_width)) ] &&
        [ $((cancel_top - new_top)) -eq $((font_height - new_height)) ]
    }
    tolmo_poll_seconds 10 moved ||
      fail "the buttons did not follow the dialog's corner: $font_width x $font_height with Cancel at $cancel_left,$cancel_top, then $(dialog_rect "$font_class" "$font_title") with Cancel at $(control_rect "$font_class" "$font_title" 2)"
    read -r new_ok_left new_ok_top _ _ <<<"$(control_rect "$font_class" "$font_title" 1)"
    [ $((cancel_left - ok_left)) -eq $((new_left - new_ok_left)) ] && [ "$new_ok_top" -eq "$new_top" ] ||
      fail "OK did not move with Cancel"
    dialog_shot "$font_class" "$font_title" font-dialog-smaller.png
    tolmo_keys End Tab End
    tolmo_poll_seconds 10 eval '[ "$(control_text "$font_class" "$font_title" 3304)" = "28" ]' ||
      fail "End in the size box did not choose 28"
    family="$(control_text "$font_class" "$font_title" 3302)"
    echo "font: \"$first_family\" at first, \"$family\" chosen"
    tolmo_keys Return
    dialog_gone "$font_class" "$font_title" || fail "OK did not close the font dialog"
    tolmo_poll_seconds 10 has_setting '    "size": 28,' || fail "the size 28 is not in the settings file"
    has_setting "    \"family\": $(json_string "$family")," || fail "the family \"$family\" is not in the settings file"
    tolmo_idle "$title"
    view="$(tolmo_view_rect "$title")"
    taller() {
      local pitch
      pitch="$(row_pitch "$1")" && awk -v p="$pitch" -v h="$first_height" 'BEGIN { exit !(p > h * 1.8) }'
    }
    tolmo_shot_until 15 "$view" "$TOLMO_SHOTS/font-28.png" taller ||
      fail "the rows are not taller at 28 points ($(row_pitch "$TOLMO_SHOTS/font-28.png" || echo none) against $first_height)"
    close_program "$title" "$pid"
    ;;

  about)
    # Help > About: the texts with the link in its colour; Esc leaves it open, its button closes it;
    # the button's right edge stands at 508.
    open_file "$sample"
    tolmo_keys "alt+$(access_key en-US menu.help)" "$(access_key en-US menu.help.about)"
    wait_dialog "$about_class" "$about_title" Button
    dialog_shot "$about_class" "$about_title" about.png
    link_pixels="$(tolmo_picture count "$TOLMO_SHOTS/about.png" "#0066CC" 40 0 0 100000 100000)"
    [ "$link_pixels" -gt 30 ] || fail "the link is not drawn in its colour ($link_pixels pixels)"
    [ "$(control_text "$about_class" "$about_title" 3201)" = "Binary Editor Tolmo" ] || fail "no product line"
    [ "$(control_text "$about_class" "$about_title" 3202)" = "$(tolmo_string en-US about.version_label) v2.00" ] ||
      fail "no version line"
    read -r first_left _ _ _ <<<"$(control_rect "$about_class" "$about_title" 3201)"
    read -r button_left button_top button_width button_height <<<"$(control_rect "$about_class" "$about_title" 1)"
    [ $((button_left + button_width - first_left + 12)) -eq 508 ] || fail "the button's right edge is not at 508"
    tolmo_keys Escape
    tolmo_drive wait-idle "$about_class" "$about_title" "$TOLMO_TIMEOUT_MS" >/dev/null || fail "the about dialog hangs"
    dialog_stands "$about_class" "$about_title" || fail "Esc closed the about dialog"
    tolmo_click $((button_left + button_width / 2)) $((button_top + button_height / 2))
    dialog_gone "$about_class" "$about_title" || fail "the Close button did not close the about dialog"
    tolmo_has_focus "$title" "$TOLMO_TIMEOUT_MS" || fail "the view did not get the keys back"
    close_program "$title" "$pid"
    ;;

  *)
    dialogs_case_ran=no
    ;;
esac
if [ "$dialogs_case_ran" = yes ]; then
  report_defects || exit 1
  echo "$name: passed"
  exit 0
fi
