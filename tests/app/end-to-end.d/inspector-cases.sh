# The data inspector's end-to-end cases, sourced by `case` once its session stands and its helpers
# are defined. A name starting with "inspector-" is run here and ends the script; any other goes on
# to the cases of `case` itself.
#
# The inspector stands right of the main window; with the main window centred on the 1280-pixel
# display it would be mostly off the screen, so each case first moves the main window left until
# the inspector is all in view, as a user would to see it.

inspector_class="Tolmo.DataInspectorWindow"
inspector_title="$(tolmo_string en-US inspector.data.title)"
# The window's own colours, by theme.
declare -A inspector_background=([Light]="#FAFAFA" [CoolSlate]="#1E2228" [DarkBlue]="#0F141C" [Black]="#111111")
declare -A inspector_header=([Light]="#E0E8F2" [CoolSlate]="#2A3039" [DarkBlue]="#2A476E" [Black]="#2D2D2D")
declare -A inspector_selection=([Light]="#D6E4F6" [CoolSlate]="#323D4D" [DarkBlue]="#20344F" [Black]="#383838")

# The inspector's outer rectangle "left top width height", once it is visible with the title $1.
inspector_rect() {
  tolmo_drive wait "$inspector_class" "${1:-$inspector_title}" "${2:-$TOLMO_TIMEOUT_MS}" | head -n 1
}

main_rect() {
  tolmo_drive wait "$TOLMO_MAIN_CLASS" "$title" "$TOLMO_TIMEOUT_MS" | head -n 1
}

# True when the inspector stands one pixel right of the main window, as tall as it and at the same top.
inspector_beside() {
  local ml mt mw mh il it iw ih
  read -r ml mt mw mh <<<"$(main_rect)"
  read -r il it iw ih <<<"$(inspector_rect "$inspector_title" 2000)"
  [ -n "$il" ] && [ "$il" -eq $((ml + mw + 1)) ] && [ "$it" -eq "$mt" ] && [ "$ih" -eq "$mh" ]
}

describe_windows() {
  echo "main: $(main_rect); inspector: $(tolmo_drive windows "$inspector_class" | tr '\n' ';')"
}

inspector_hidden() {
  tolmo_drive windows "$inspector_class" | grep -q '^hidden '
}

# Moves the main window by dragging its title bar, as a user would; Wine takes no move of its X
# window from outside as a move of the window.
move_main() { # LEFT TOP
  local ml mt mw x y
  read -r ml mt mw _ <<<"$(main_rect)"
  x=$((ml + mw / 2))
  [ "$x" -lt 40 ] && x=40
  [ "$x" -gt 1240 ] && x=1240
  y=$((mt + 10))
  tolmo_drag "$x" "$y" $((x + $1 - ml)) $((y + $2 - mt)) "$title"
  tolmo_poll_seconds 10 main_at "$1" "$2" || fail "the main window did not move to $1,$2: $(describe_windows)"
}

main_at() { # LEFT TOP
  local ml mt
  read -r ml mt _ _ <<<"$(main_rect)"
  [ "$ml" -eq "$1" ] && [ "$mt" -eq "$2" ]
}

# Asks the inspector to paint all of itself again, and waits until it has.
inspector_repaint() {
  tolmo_drive repaint "$inspector_class" "" 5000 2 >/dev/null 2>&1 || true
}

# Screenshots of the inspector's outer rectangle into $1 until "$2... $1" holds, for up to 15 s.
inspector_shot_until() {
  local file="$1" deadline tries=0
  shift
  deadline=$((SECONDS + 20))
  while :; do
    inspector_repaint
    tolmo_screenshot "$(inspector_rect)" "$file" 5 || true
    "$@" "$file" && return 0
    [ "$SECONDS" -ge "$deadline" ] && return 1
    tries=$((tries + 1))
  done
}

# The inspector painted in a theme: its background over much of it and its header band across.
painted_in() { # THEME PNG
  share_at_least "${inspector_background[$1]}" 30 "$2" &&
    [ "$(tolmo_picture count "$2" "${inspector_header[$1]}" 0 0 0 100000 100000)" -gt 4000 ]
}

# Sets client_left and client_top, the inspector's client area in its screenshot $1, from the top left
# corner of its header band in the theme $2.
find_client() { # PNG THEME
  read -r client_left client_top _ _ <<<"$(tolmo_boxes "$1" "${inspector_header[$2]}" | head -n 1)"
  [ -n "$client_left" ] || fail "no header band in $1"
}

# Clicks the middle of the value cell of row $1, or of the name cell with "name" as $2.
click_row() { # ROW [name]
  local il it x y
  read -r il it _ _ <<<"$(inspector_rect)"
  x=$((il + client_left + 112 + 100))
  [ "${2:-}" = name ] && x=$((il + client_left + 50))
  y=$((it + client_top + 38 + 36 * $1 + 18))
  tolmo_click "$x" "$y"
}

# The file of the copy cases: 64 bytes, none equal to its neighbours.
make_inspected_file() {
  python3 -c "import sys; sys.stdout.buffer.write(bytes((i * 37 + 11) & 0xFF for i in range(64)))" >"$1"
}

# The inspector's text for row $3 of the file $1 at offset $2, as it shows it.
expected_value() { # FILE OFFSET ROW
  python3 - "$@" <<'EOF'
import sys
data = open(sys.argv[1], "rb").read()
offset, row = int(sys.argv[2]), int(sys.argv[3])
size, order = {1: (1, "little"), 2: (2, "little"), 3: (2, "big"), 4: (4, "little"), 5: (4, "big"),
               6: (8, "little"), 7: (8, "big")}[row]
value = int.from_bytes(data[offset:offset + size], order)
print(f"{value} / 0x{value:0{size * 2}X}")
EOF
}

# Presses Ctrl+C and waits until the clipboard holds $1.
copy_gives() {
  tolmo_clipboard_mark || return 1
  tolmo_keys ctrl+c
  tolmo_poll_seconds 3 tolmo_clipboard_changed || return 1
  [ "$(tolmo_clipboard)" = "$1" ]
}

# Opens the Settings > Analysis menu, photographs it into $1 and closes it again.
analysis_menu_shot() {
  local menus rect
  tolmo_focus "$title" || fail "no focus for the menu"
  tolmo_keys "alt+$(access_key en-US menu.settings)" "$(access_key en-US menu.settings.analysis)"
  tolmo_poll_seconds 10 menus_open 2 || fail "the Analysis menu did not open"
  # The submenu stands right of the Settings menu.
  rect="$(tolmo_drive windows "#32768" | awk '$1 == "visible" { print $2, $3, $4, $5 }' | sort -n | tail -n 1)"
  tolmo_screenshot "$rect" "$1" 10
  # Out of the submenu, out of the menu, and out of the menu bar the keyboard had entered.
  tolmo_keys Escape Escape
  tolmo_drive wait-idle "$TOLMO_MAIN_CLASS" "$title" 2000 >/dev/null 2>&1 || tolmo_keys Escape
  tolmo_idle "$title" || fail "the menu did not close"
}

menus_open() {
  [ "$(tolmo_drive windows "#32768" | grep -c '^visible')" -ge "$1" ]
}

setting_inspector_visible() { # true|false
  # The inspector's switch is the only "visible" line without a comma behind it.
  has_setting "      \"visible\": $1"
}

# Every inspector case starts the same way: a file, and the main window dragged left so that the
# inspector is all on the screen, where it can be photographed and clicked.
start_inspected() { # FILE
  local mw
  open_file "$1"
  inspector_rect >/dev/null || fail "no inspector window titled \"$inspector_title\""
  tolmo_poll_seconds 20 inspector_beside || fail "the inspector does not stand beside the main window: $(describe_windows)"
  read -r _ _ mw _ <<<"$(main_rect)"
  move_main $((1280 - 520 - 1 - mw - 20)) 40
  tolmo_poll_seconds 20 inspector_beside || fail "the inspector did not follow the main window: $(describe_windows)"
  rect="$(main_rect)"
}

case "$name" in
  inspector-placement)
    # The inspector stands one pixel right of the main window with its height, follows it when it
    # moves, hides while it is minimised and comes back with it.
    start_inspected "$sample"
    read -r il it iw ih <<<"$(inspector_rect)"
    [ "$iw" -eq 520 ] || fail "the inspector is $iw pixels wide, not 520"
    tolmo_shot "$rect" "$TOLMO_SHOTS/main.png"
    inspector_shot_until "$TOLMO_SHOTS/inspector.png" painted_in CoolSlate ||
      fail "the inspector is not painted in its CoolSlate colours"
    step "moving the main window"
    move_main 10 60
    tolmo_poll_seconds 20 inspector_beside || fail "the inspector did not follow the move: $(describe_windows)"
    move_main -200 20
    tolmo_poll_seconds 20 inspector_beside || fail "the inspector did not follow the move back: $(describe_windows)"
    step "minimising the main window"
    tolmo_focus "$title" || fail "no focus"
    # The system menu's Minimize, as the keyboard reaches it.
    tolmo_keys alt+space n
    tolmo_poll_seconds 20 inspector_hidden || fail "the inspector stayed visible with the main window minimised: $(describe_windows)"
    step "restoring the main window"
    tolmo_keys alt+space r
    tolmo_poll_seconds 20 inspector_beside || fail "the inspector did not come back beside the restored main window: $(describe_windows)"
    inspector_shot_until "$TOLMO_SHOTS/inspector-restored.png" painted_in CoolSlate ||
      fail "the restored inspector is not painted"
    close_program "$title" "$pid"
    ;;

  inspector-copy)
    # A click on a value picks it and Ctrl+C copies it as shown, for the bytes at the caret; the
    # copied value follows the caret; a click on a name drops the pick, and Ctrl+C then copies
    # nothing.
    file="$work/inspected.bin"
    make_inspected_file "$file"
    start_inspected "$file"
    inspector_shot_until "$TOLMO_SHOTS/inspector.png" painted_in CoolSlate || fail "the inspector is not painted"
    find_client "$TOLMO_SHOTS/inspector.png" CoolSlate
    for row in 1 2 5 6; do
      step "row $row at offset 0"
      click_row "$row"
      expected="$(expected_value "$file" 0 "$row")"
      tolmo_poll_seconds 15 copy_gives "$expected" ||
        fail "Ctrl+C on row $row copied \"$(tolmo_clipboard)\", not \"$expected\""
    done
    inspector_shot_until "$TOLMO_SHOTS/picked.png" share_at_least "${inspector_selection[CoolSlate]}" 2 ||
      fail "the picked row is not shown in the selection colour"
    step "the caret moves three bytes on"
    tolmo_focus "$title" || fail "no focus for the view"
    tolmo_keys Right Right Right
    click_row 6
    expected="$(expected_value "$file" 3 6)"
    tolmo_poll_seconds 20 copy_gives "$expected" ||
      fail "after the caret moved, Ctrl+C copied \"$(tolmo_clipboard)\", not \"$expected\""
    step "Ctrl+Insert copies too"
    tolmo_clipboard_mark || fail "cannot mark the clipboard"
    tolmo_keys ctrl+Insert
    tolmo_poll_seconds 5 tolmo_clipboard_changed || fail "Ctrl+Insert copied nothing"
    [ "$(tolmo_clipboard)" = "$expected" ] || fail "Ctrl+Insert copied \"$(tolmo_clipboard)\""
    step "a click on a name drops the pick"
    click_row 6 name
    tolmo_clipboard_mark || fail "cannot mark the clipboard"
    tolmo_keys ctrl+c
    tolmo_drive wait-idle "$inspector_class" "$inspector_title" "$TOLMO_TIMEOUT_MS" >/dev/null || true
    ! tolmo_poll_seconds 2 tolmo_clipboard_changed || fail "Ctrl+C without a pick copied \"$(tolmo_clipboard)\""
    inspector_shot_until "$TOLMO_SHOTS/unpicked.png" share_at_least "${inspector_background[CoolSlate]}" 30 ||
      fail "the inspector is not painted after the pick went"
    [ "$(tolmo_picture count "$TOLMO_SHOTS/unpicked.png" "${inspector_selection[CoolSlate]}" 0 0 0 100000 100000)" -lt 500 ] ||
      fail "a row is still shown picked"
    close_program "$title" "$pid"
    ;;

  inspector-switch)
    # Settings > Analysis > Data Inspector and the inspector's close box both switch it off: the
    # window goes, the menu's check goes and the settings file says so; the menu brings it back.
    start_inspected "$sample"
    setting_inspector_visible true || fail "the settings file does not have the inspector on"
    analysis_menu_shot "$TOLMO_SHOTS/menu-on.png"
    step "off from the menu"
    tolmo_focus "$title" || fail "no focus"
    tolmo_keys "alt+$(access_key en-US menu.settings)" "$(access_key en-US menu.settings.analysis)" \
      "$(access_key en-US menu.settings.analysis.data_inspector)"
    tolmo_drive wait-gone "$inspector_class" "$inspector_title" "$TOLMO_TIMEOUT_MS" >/dev/null ||
      fail "the inspector stayed after the menu switched it off"
    tolmo_poll_seconds 10 setting_inspector_visible false || fail "the settings file still has the inspector on"
    [ -z "$(tolmo_drive windows "$inspector_class")" ] || fail "the inspector's window was hidden, not destroyed"
    analysis_menu_shot "$TOLMO_SHOTS/menu-off.png"
    differs_from "$TOLMO_SHOTS/menu-on.png" 10 "$TOLMO_SHOTS/menu-off.png" || fail "the menu's check did not go"
    step "on from the menu"
    tolmo_focus "$title" || fail "no focus"
    tolmo_keys "alt+$(access_key en-US menu.settings)" "$(access_key en-US menu.settings.analysis)" \
      "$(access_key en-US menu.settings.analysis.data_inspector)"
    inspector_rect >/dev/null || fail "the menu did not bring the inspector back"
    tolmo_poll_seconds 20 inspector_beside || fail "the inspector came back elsewhere: $(describe_windows)"
    tolmo_poll_seconds 10 setting_inspector_visible true || fail "the settings file does not have the inspector on again"
    analysis_menu_shot "$TOLMO_SHOTS/menu-on-again.png"
    same_as "$TOLMO_SHOTS/menu-on.png" "$TOLMO_SHOTS/menu-on-again.png" || fail "the menu's check did not come back"
    step "off with the close box"
    inspector_shot_until "$TOLMO_SHOTS/inspector.png" painted_in CoolSlate || fail "the inspector is not painted"
    read -r il it iw _ <<<"$(inspector_rect)"
    tolmo_click $((il + iw - 14)) $((it + 12))
    tolmo_drive wait-gone "$inspector_class" "$inspector_title" "$TOLMO_TIMEOUT_MS" >/dev/null ||
      fail "the close box did not take the inspector away"
    tolmo_poll_seconds 10 setting_inspector_visible false || fail "the close box left the setting on"
    tolmo_wait_title "$title" || fail "the main window went with the inspector"
    analysis_menu_shot "$TOLMO_SHOTS/menu-off-again.png"
    same_as "$TOLMO_SHOTS/menu-off.png" "$TOLMO_SHOTS/menu-off-again.png" || fail "the menu's check stayed after the close box"
    close_program "$title" "$pid"
    step "the next start has no inspector"
    open_file "$sample"
    ! tolmo_drive wait "$inspector_class" "$inspector_title" 3000 >/dev/null 2>&1 || fail "the inspector came back at the next start"
    close_program "$title" "$pid"
    ;;

  inspector-theme)
    # Each theme repaints the inspector in its own colours.
    start_inspected "$sample"
    settings_key="$(access_key en-US menu.settings)"
    theme_key="$(access_key en-US menu.view.theme)"
    for pick in Light:menu.view.theme.light DarkBlue:menu.view.theme.darkblue \
      Black:menu.view.theme.black CoolSlate:menu.view.theme.coolslate; do
      theme="${pick%%:*}"
      step "$theme"
      tolmo_focus "$title" || fail "no focus"
      tolmo_keys "alt+$settings_key" "$theme_key" "$(access_key en-US "${pick#*:}")"
      inspector_shot_until "$TOLMO_SHOTS/$theme.png" painted_in "$theme" ||
        fail "the inspector is not painted in its $theme colours"
      find_client "$TOLMO_SHOTS/$theme.png" "$theme"
      read -r _ _ shot_width _ <<<"$(inspector_rect)"
      text_ink="$(tolmo_picture ink "$TOLMO_SHOTS/$theme.png" "${inspector_background[$theme]}" 60 \
        "$((client_left + 124))" "$((client_top + 40))" "$((shot_width - client_left - 140))" 400)"
      [ "$text_ink" -gt 300 ] || fail "the values are not drawn in $theme ($text_ink pixels of ink)"
    done
    close_program "$title" "$pid"
    ;;

  inspector-language)
    # A language from Settings > Language retitles and relabels the inspector at once.
    start_inspected "$sample"
    inspector_shot_until "$TOLMO_SHOTS/english.png" painted_in CoolSlate || fail "the inspector is not painted"
    german_title="$(tolmo_string de-DE inspector.data.title)"
    [ "$german_title" != "$inspector_title" ] || fail "the German title is the English one"
    tolmo_focus "$title" || fail "no focus"
    tolmo_keys "alt+$(access_key en-US menu.settings)" "$(access_key en-US menu.view.language)" Down Down Down Down Return
    tolmo_idle "$title"
    has_setting '  "language": "de-DE",' || fail "de-DE is not in the settings file"
    inspector_rect "$german_title" >/dev/null || fail "no inspector titled \"$german_title\""
    tolmo_poll_seconds 10 tolmo_x_window_named "$german_title" || fail "the inspector's X window is not titled \"$german_title\""
    xwin="$(tolmo_x_window "$german_title")"
    [ "$(xdotool getwindowname "$xwin")" = "$german_title" ] || fail "the inspector's title is \"$(xdotool getwindowname "$xwin")\""
    inspector_title="$german_title"
    inspector_shot_until "$TOLMO_SHOTS/german.png" differs_from "$TOLMO_SHOTS/english.png" 100 ||
      fail "the inspector's labels did not change"
    title="$(tolmo_string de-DE app.title) - $(basename "$sample")"
    close_program "$title" "$pid"
    ;;

  *)
    return 0
    ;;
esac
report_defects || exit 1
echo "$name: passed"
exit 0
