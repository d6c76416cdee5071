# The struct view's cases, sourced by `case`: the window beside the main window, a pattern opened
# through its open button and the real file dialog, its rows checked against the file through the
# copied text form, the value format from its drop-down, reload, the error state, close, themes and
# languages. Each defines one function, run by the dispatcher in `case` by its name.

struct_class="Tolmo.StructViewWindow"

# Copies the shipped patterns beside the scratch copy of the program, where the dialog starts.
struct_scratch_patterns() {
  cp -r "$TOLMO_ROOT/patterns" "$TOLMO_SCRATCH/patterns"
}

# A real PNG made by ImageMagick: 300 by 200 pixels.
struct_make_png() {
  convert -size 300x200 xc:'#3366CC' -depth 8 "PNG24:$1"
  [ "$(xxd -p -l 8 "$1")" = "89504e470d0a1a0a" ] || fail "ImageMagick did not write a PNG"
}

# Turns the struct view on from Settings > Analysis; struct_find waits for its window.
struct_switch() {
  tolmo_keys "alt+$(access_key en-US menu.settings)" "$(access_key en-US menu.settings.analysis)" \
    "$(access_key en-US menu.settings.analysis.struct_view)"
}

# Sets sv_rect ("left top width height" of the struct view's frame) and the client origin and width
# (sv_x, sv_y, sv_w) from where its buttons stand: the info button is 12 from the client's right
# edge, the open button 10 below its top.
struct_find() {
  local title="$1" children info open edit
  sv_rect="$(tolmo_drive wait "$struct_class" "$title" "$TOLMO_TIMEOUT_MS" | head -n 1)" ||
    fail "no struct view titled \"$title\""
  children="$(tolmo_drive children "$struct_class" "$title" "$TOLMO_TIMEOUT_MS")"
  info="$(awk '$2 == 4102 { print $4, $5, $6, $7 }' <<<"$children")"
  open="$(awk '$2 == 4101 { print $4, $5, $6, $7 }' <<<"$children")"
  [ -n "$info" ] && [ -n "$open" ] || fail "the struct view has no open or info button"
  edit="$(awk '$1 == "Edit" { print $4; exit }' <<<"$children")"
  [ -n "$edit" ] || fail "the struct view has no edit control"
  read -r _ open_t _ _ <<<"$open"
  read -r info_l _ info_w _ <<<"$info"
  # The buttons stand right-aligned; the edits start 12 from the client's left edge.
  sv_x=$((edit - 12))
  sv_y=$((open_t - 10))
  sv_w=$((info_l + info_w + 12 - sv_x))
}

struct_moved_from() {
  local left
  left="$(tolmo_drive wait "$struct_class" "Struct View" 2000 | head -n 1 | cut -d' ' -f1)"
  [ -n "$left" ] && [ "$left" != "$1" ]
}

# Clicks the centre of the struct view's button of control id $2 (window titled $1).
struct_button() {
  local rect
  rect="$(tolmo_drive children "$struct_class" "$1" "$TOLMO_TIMEOUT_MS" | awk -v id="$2" '$2 == id { print $4, $5, $6, $7 }')"
  [ -n "$rect" ] || fail "no button $2 in the struct view"
  read -r l t w h <<<"$rect"
  tolmo_click "$((l + w / 2))" "$((t + h / 2))"
}

# Clicks the struct view's top band beside its definition line, which takes the keyboard in every
# state (below it stand the rows or the message's own edit control).
# The point alternates, since xdotool's synchronous move waits long for a move that is not needed.
struct_focus_clicks=0
struct_focus() {
  struct_focus_clicks=$((struct_focus_clicks + 1))
  tolmo_click "$((sv_x + 150 + struct_focus_clicks % 2 * 10))" "$((sv_y + 50))"
  tolmo_drive wait-idle "$struct_class" "$1" "$TOLMO_TIMEOUT_MS" >/dev/null || true
}

# Copies the struct view's text form with Ctrl+C until its CR LF lines hold $2 (a grep pattern);
# prints the text without CR.
struct_copy_until() {
  local title="$1" pattern="$2" deadline=$((SECONDS + 30)) text
  while :; do
    struct_focus "$title"
    if text="$(tolmo_copy_selection 5)"; then
      text="$(tr -d '\r' <<<"$text")"
      if grep -q -- "$pattern" <<<"$text"; then
        printf '%s\n' "$text"
        return 0
      fi
    fi
    [ "$SECONDS" -ge "$deadline" ] && { printf '%s\n' "$text" >&2; return 1; }
  done
}

# Checks the copied rows ($1) field by field against the PNG ($2) under the format $3 ("hex little"
# or "dec big"); prints what it compared.
struct_check_png_rows() {
  python3 - "$1" "$2" "$3" <<'EOF'
import sys
text, png, mode = sys.argv[1], open(sys.argv[2], "rb").read(), sys.argv[3]
lines = text.split("\n")
assert lines[0] == "Struct View", lines[0]
assert lines[1] == "Definition: png.tlpat", lines[1]
assert lines[3] == "Offset\tValue\tSize\tName", lines[3]
rows = {}
for line in lines[4:]:
    offset, value, size, name = line.split("\t")
    rows[name.strip()] = (offset, value, size)
decimal, big = mode == "dec big", mode == "dec big"
def integer(at, size):
    number = int.from_bytes(png[at:at + size], "big" if big else "little")
    return str(number) if decimal else "0x%0*X" % (size * 2, number)
expected = {
    "signature": (0, 8, None), "length": (8, 4, 4), "type": (12, 4, None), "width": (16, 4, 4),
    "height": (20, 4, 4), "bitDepth": (24, 1, 1), "colorType": (25, 1, 1), "compression": (26, 1, 1),
    "filter": (27, 1, 1), "interlace": (28, 1, 1), "crc": (29, 4, 4),
}
for name, (at, size, scalar) in expected.items():
    assert name in rows, "no row " + name
    offset, value, shown_size = rows[name]
    assert offset == "0x%X" % at, (name, offset)
    assert shown_size == str(size), (name, shown_size)
    if scalar:
        assert value == integer(at, size), (name, value, integer(at, size))
    else:
        assert " ".join("%02X" % b for b in png[at:at + size]) in value.replace("0x", ""), (name, value)
    print("%s at %s: %s" % (name, offset, value))
assert rows["ihdr : PngIhdrChunk"][1] == "", rows["ihdr : PngIhdrChunk"]
EOF
}

# Switches the struct view on from the menu and checks where it stands: one pixel left of the main
# window at its height, 700 wide. The main window is centred, which leaves the struct view's left part
# off the screen: the main window is then dragged right by its caption, and the struct view must
# follow it. Sets main_l main_t main_w main_h, sv_rect and what struct_find sets.
struct_show_beside() {
  local sv_l sv_t sv_w0 sv_h
  step "switched on from the Analysis menu"
  struct_switch
  struct_find "Struct View"
  has_setting '      "visible": true,' || fail "the struct view's switch is not stored"
  read -r main_l main_t main_w main_h <<<"$(tolmo_wait_main "$title")"
  read -r sv_l sv_t sv_w0 sv_h <<<"$sv_rect"
  echo "main window $main_l $main_t $main_w $main_h, struct view $sv_rect, client at $sv_x,$sv_y $sv_w wide"
  [ "$((sv_l + sv_w0 + 1))" -eq "$main_l" ] || fail "the struct view does not end one pixel left of the main window"
  [ "$sv_t" -eq "$main_t" ] && [ "$sv_h" -eq "$main_h" ] || fail "the struct view is not as tall as the main window"
  [ "$sv_w0" -eq 700 ] || fail "the struct view is $sv_w0 wide, not 700"
  if [ "$sv_l" -lt 0 ]; then
    step "the struct view follows the main window"
    tolmo_drag "$((main_l + main_w / 2))" "$((main_t + 10))" "$((main_l + main_w / 2 - sv_l + 8))" "$((main_t + 10))" "$title"
    tolmo_poll_seconds 10 struct_moved_from "$sv_l" || fail "the struct view did not follow the main window"
    struct_find "Struct View"
    read -r main_l main_t main_w main_h <<<"$(tolmo_wait_main "$title")"
    read -r sv_l sv_t sv_w0 sv_h <<<"$sv_rect"
    echo "moved: main window $main_l $main_t $main_w $main_h, struct view $sv_rect"
    [ "$((sv_l + sv_w0 + 1))" -eq "$main_l" ] || fail "the moved struct view does not end one pixel left of the main window"
    [ "$sv_t" -eq "$main_t" ] || fail "the moved struct view is not at the main window's top"
  fi

}

structview_open_case() {
  # Off by default; Settings > Analysis > Struct View shows it one pixel left of the main window at
  # its height; its open button and the real file dialog load patterns/png.tlpat; the rows show the
  # header of a real PNG at offset 0, checked field by field through the copied text; the drop-down
  # switches to decimal and big-endian; F5 reloads the edited pattern; a broken pattern shows the
  # error; the close button clears it; the close box switches the view off.
  local png="$work/image.png" text
  struct_scratch_patterns
  struct_make_png "$png"
  open_file "$png"
  tolmo_drive windows "$struct_class" | grep -q . && fail "the struct view stands before it was switched on"
  struct_show_beside
  text="$(struct_copy_until "Struct View" "No struct definition")" || fail "no empty message"

  step "open png.tlpat through the dialog"
  struct_button "Struct View" 4101
  tolmo_focus_box "Open Struct Definition" || fail "no dialog titled Open Struct Definition"
  tolmo_screenshot "0 0 1280 1024" "$TOLMO_SHOTS/dialog.png" 5 || true
  # The dialog starts in the patterns folder, so the bare name is enough.
  xdotool type --delay 40 "png.tlpat"
  tolmo_keys Return
  tolmo_drive wait-gone "$TOLMO_BOX_CLASS" "Open Struct Definition" "$TOLMO_TIMEOUT_MS" >/dev/null ||
    fail "the dialog did not close"
  text="$(struct_copy_until "Struct View" "png.tlpat")" || fail "the rows of png.tlpat did not come"
  struct_check_png_rows "$text" "$png" "hex little" || fail "the rows do not match the PNG"

  step "decimal and big-endian from the drop-down"
  [ "$((sv_x + 310))" -gt 0 ] || fail "the drop-down box is off the screen"
  tolmo_click "$((sv_x + 310))" "$((sv_y + 79))"
  tolmo_screenshot "0 0 1280 1024" "$TOLMO_SHOTS/menu.png" 5 || true
  tolmo_keys "$(access_key en-US structview.valueformat.endian)" "$(access_key en-US structview.valueformat.endian.big)"
  tolmo_poll_seconds 10 has_setting '      "endian": "big",' || fail "big-endian is not stored"
  tolmo_click "$((sv_x + 306))" "$((sv_y + 80))"
  tolmo_keys "$(access_key en-US structview.valueformat.numericbase)" \
    "$(access_key en-US structview.valueformat.numericbase.dec)"
  tolmo_poll_seconds 10 has_setting '      "numericBase": "dec"' || fail "decimal is not stored"
  text="$(struct_copy_until "Struct View" "$(printf '^0x10\t300\t4\t')")" || fail "the width does not read 300"
  struct_check_png_rows "$text" "$png" "dec big" || fail "the decimal big-endian rows do not match the PNG"

  step "F5 reloads the edited pattern"
  sed -i 's/uint32_t width;/uint32_t pixelWidth;/' "$TOLMO_SCRATCH/patterns/png.tlpat"
  struct_focus "Struct View"
  tolmo_keys F5
  text="$(struct_copy_until "Struct View" "pixelWidth")" || fail "F5 did not reload the pattern"

  step "a broken pattern shows the error"
  printf 'struct PngHeader { uint32_t a;\n' >"$TOLMO_SCRATCH/patterns/png.tlpat"
  struct_focus "Struct View"
  tolmo_keys F5
  text="$(struct_copy_until "Struct View" "^Error: .")" || fail "no error after reloading a broken pattern"
  echo "error shown: $(tail -n +4 <<<"$text" | head -n 3)"
  grep -q '^Definition: -$' <<<"$text" || fail "the error kept a definition"
  tolmo_shot "$sv_x $sv_y $((sv_w < 400 ? sv_w : 400)) 200" "$TOLMO_SHOTS/struct-error.png"

  step "the close button clears"
  cp "$TOLMO_ROOT/patterns/png.tlpat" "$TOLMO_SCRATCH/patterns/png.tlpat"
  struct_focus "Struct View"
  tolmo_keys F5
  text="$(struct_copy_until "Struct View" "png.tlpat")" || fail "the mended pattern did not load"
  struct_button "Struct View" 4103
  text="$(struct_copy_until "Struct View" "No struct definition")" || fail "the close button did not clear"

  step "the close box switches the view off"
  tolmo_drive close "$struct_class" "Struct View" "$TOLMO_TIMEOUT_MS" >/dev/null || fail "cannot close the struct view"
  tolmo_drive wait-gone "$struct_class" "Struct View" "$TOLMO_TIMEOUT_MS" >/dev/null || fail "the struct view stayed"
  tolmo_poll_seconds 10 has_setting '      "visible": false,' || fail "the switch is still stored on"
  close_program "$title" "$pid"
}

structview_looks_case() {
  # Themes repaint the struct view in its own palette, a language relabels it, and the main window
  # carries it along when it moves.
  local png="$work/image.png" settings_key theme_key shot
  struct_scratch_patterns
  struct_make_png "$png"
  open_file "$png"
  struct_show_beside
  # The top band and the message below it: both colours of the palette show there.
  shot="$sv_x $sv_y $((sv_w < 300 ? sv_w : 300)) 200"
  settings_key="$(access_key en-US menu.settings)"
  theme_key="$(access_key en-US menu.view.theme)"
  declare -A struct_background=([Light]="#FAFAFA" [Black]="#111111" [DarkBlue]="#0F141C")
  declare -A struct_band=([Light]="#E0E8F2" [Black]="#2D2D2D" [DarkBlue]="#2A476E")
  declare -A struct_text=([Light]="#202020" [Black]="#F3F3F3" [DarkBlue]="#E6EDF3")
  # Background and band in their shares, and the empty message drawn in the text colour below the band.
  struct_painted() { # THEME PNG
    share_at_least "${struct_background[$1]}" 45 "$2" && share_at_least "${struct_band[$1]}" 20 "$2" &&
      [ "$(tolmo_picture count "$2" "${struct_text[$1]}" 40 0 70 300 30)" -gt 30 ]
  }
  for pick in Black:menu.view.theme.black Light:menu.view.theme.light DarkBlue:menu.view.theme.darkblue; do
    theme="${pick%%:*}"
    step "$theme"
    tolmo_focus "$title" || fail "cannot focus the main window"
    tolmo_keys "alt+$settings_key" "$theme_key" "$(access_key en-US "${pick#*:}")"
    tolmo_shot_until 10 "$shot" "$TOLMO_SHOTS/struct-$theme.png" struct_painted "$theme" ||
      fail "the struct view did not paint ${struct_background[$theme]} and ${struct_band[$theme]} in $theme"
  done
  step "German"
  tolmo_focus "$title" || fail "cannot focus the main window"
  tolmo_keys "alt+$(access_key en-US menu.settings)" "$(access_key en-US menu.view.language)" Down Down Down Down Return
  tolmo_drive wait "$struct_class" "$(tolmo_string de-DE structview.title)" "$TOLMO_TIMEOUT_MS" >/dev/null ||
    fail "the struct view is not titled $(tolmo_string de-DE structview.title)"
  close_program "$(tolmo_string de-DE app.title) - $(basename "$png")" "$pid"
}

case "$name" in
  structview-open)
    structview_open_case
    report_defects || exit 1
    echo "$name: passed"
    exit 0
    ;;
  structview-looks)
    structview_looks_case
    report_defects || exit 1
    echo "$name: passed"
    exit 0
    ;;
esac
