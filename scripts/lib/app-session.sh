# Shell functions for driving one copy of tolmo.exe with real keys and clicks on its own display,
# and for looking at what it shows. Sourced after scripts/lib/window-session.sh and after setting
# TOLMO_WINEPREFIX, TOLMO_EXE and TOLMO_DRIVER. Requires xdotool, xclip, ImageMagick and python3.
# Nothing here sleeps for a fixed time: every wait is for a condition, with a limit.

TOLMO_MAIN_CLASS="Tolmo.MainWindow"
TOLMO_VIEW_CLASS="Tolmo.HexView"
TOLMO_BOX_CLASS="#32770"
TOLMO_TIMEOUT_MS="${TOLMO_TIMEOUT_MS:-30000}"

tolmo_fail() {
  echo "FAILED: $*" >&2
  exit 1
}

tolmo_drive() {
  "$TOLMO_ROOT/scripts/wine-run" "$TOLMO_DRIVER" "$@" | tr -d '\r'
  return "${PIPESTATUS[0]}"
}

tolmo_picture() {
  python3 "$TOLMO_ROOT/scripts/lib/picture.py" "$@"
}

# Makes a scratch folder ($1) holding a copy of the program, its strings and the portable marker,
# so the settings file is written beside this copy and no other case sees it.
tolmo_make_scratch() {
  local scratch="$1"
  rm -rf "$scratch"
  mkdir -p "$scratch/resources"
  cp "$TOLMO_EXE" "$scratch/tolmo.exe"
  cp -r "$TOLMO_ROOT/resources/strings" "$scratch/resources/strings"
  : >"$scratch/tolmo.portable"
  TOLMO_SCRATCH="$scratch"
}

tolmo_settings_file() {
  printf '%s/tolmo.settings.json' "$TOLMO_SCRATCH"
}

# The text of a key in a language file of the scratch copy: tolmo_string en-US menu.file
tolmo_string() {
  sed -n "s/^$2=//p" "$TOLMO_SCRATCH/resources/strings/$1.txt" | head -n 1 | tr -d '\r'
}

# Starts the scratch copy with the given arguments (already Windows paths).
tolmo_start_copy() {
  tolmo_start_program "$TOLMO_SCRATCH/tolmo.exe" "$@"
}

# Waits for a visible main window titled $1 and prints its rectangle "left top width height".
tolmo_wait_main() {
  local out
  out="$(tolmo_drive wait "$TOLMO_MAIN_CLASS" "$1" "${2:-$TOLMO_TIMEOUT_MS}")" || return 1
  head -n 1 <<<"$out"
}

# True once a visible main window is titled exactly $1 (within $2 ms).
tolmo_wait_title() {
  tolmo_drive wait "$TOLMO_MAIN_CLASS" "$1" "${2:-$TOLMO_TIMEOUT_MS}" >/dev/null
}

# True once no visible main window is titled $1 (within $2 ms).
tolmo_wait_title_gone() {
  tolmo_drive wait-gone "$TOLMO_MAIN_CLASS" "$1" "${2:-$TOLMO_TIMEOUT_MS}" >/dev/null
}

# Waits for a message box captioned $1 and prints its text.
tolmo_wait_box() {
  local out
  out="$(tolmo_drive wait "$TOLMO_BOX_CLASS" "$1" "${2:-$TOLMO_TIMEOUT_MS}")" || return 1
  sed -n 2p <<<"$out"
}

# The X window of the Wine window titled exactly $1.
tolmo_x_window() {
  xdotool search --name "^$(sed 's/[][\.*^$+?(){}|]/\\&/g' <<<"$1")\$" 2>/dev/null | head -n 1
}

# Gives the window titled $1 the keyboard and waits until its hex view has the focus. Wine takes
# keys only through the focused X window and activates its own windows on a click; so the X focus
# is set first, and when that is not enough the title bar is clicked, and then the blank right edge
# of the view, where a click only takes the focus, as a user would.
tolmo_focus() {
  local title="$1" xwin rect left top width view
  rect="$(tolmo_wait_main "$title")" || return 1
  # The X window takes its name a moment after Wine shows the window.
  tolmo_poll_seconds 5 tolmo_x_window_named "$title" || true
  xwin="$(tolmo_x_window "$title")"
  [ -n "$xwin" ] && xdotool windowfocus --sync "$xwin" 2>/dev/null
  tolmo_has_focus "$title" 2000 && return 0
  read -r left top width _ <<<"$rect"
  tolmo_click "$((left + width / 2))" "$((top + 8))" "$title"
  tolmo_has_focus "$title" 2000 && return 0
  read -r left top width _ <<<"$(tolmo_view_rect "$title")"
  tolmo_click "$((left + width - 4))" "$((top + 4))" "$title"
  tolmo_has_focus "$title" "$TOLMO_TIMEOUT_MS"
}

# True once the window titled $1 is in front and its hex view has the keyboard (within $2 ms).
tolmo_has_focus() {
  tolmo_drive wait-focus "$TOLMO_MAIN_CLASS" "$1" "$TOLMO_VIEW_CLASS" "${2:-$TOLMO_TIMEOUT_MS}" >/dev/null 2>&1
}

tolmo_x_window_named() {
  [ -n "$(tolmo_x_window "$1")" ]
}

# Gives the keyboard to the message box captioned $1.
tolmo_focus_box() {
  local xwin
  tolmo_wait_box "$1" >/dev/null || return 1
  tolmo_poll_seconds 5 tolmo_x_window_named "$1" || return 1
  xwin="$(tolmo_x_window "$1")"
  [ -n "$xwin" ] || return 1
  xdotool windowfocus --sync "$xwin" 2>/dev/null || true
}

# Sends keys (xdotool names) to whatever has the focus, one at a time so Wine sees each.
tolmo_keys() {
  local key
  for key in "$@"; do
    xdotool key --delay 30 "$key"
  done
}

# Waits until the window titled $1 has taken what was sent to it and has no menu open.
tolmo_idle() {
  tolmo_drive wait-idle "$TOLMO_MAIN_CLASS" "$1" "$TOLMO_TIMEOUT_MS" >/dev/null
}

# Clicks at the screen point $1 $2 with the left button: the pointer moves there first, and Wine
# has taken the move before the button goes down, as with a hand on a mouse.
tolmo_click() {
  xdotool mousemove --sync "$1" "$2"
  tolmo_drive wait-idle "$TOLMO_MAIN_CLASS" "${3:-}" "$TOLMO_TIMEOUT_MS" >/dev/null 2>&1 || true
  xdotool mousedown 1
  xdotool mouseup 1
}

# Drags with the left button from $1 $2 to $3 $4, in the same unhurried steps.
tolmo_drag() {
  xdotool mousemove --sync "$1" "$2"
  tolmo_drive wait-idle "$TOLMO_MAIN_CLASS" "${5:-}" "$TOLMO_TIMEOUT_MS" >/dev/null 2>&1 || true
  xdotool mousedown 1
  xdotool mousemove --sync "$(((${1} + ${3}) / 2))" "$(((${2} + ${4}) / 2))"
  xdotool mousemove --sync "$3" "$4"
  tolmo_drive wait-idle "$TOLMO_MAIN_CLASS" "${5:-}" "$TOLMO_TIMEOUT_MS" >/dev/null 2>&1 || true
  xdotool mouseup 1
}

# The client area of a child of the main window titled $1 on the screen, by class ($2):
# "left top width height".
tolmo_child_rect() {
  tolmo_drive children "$TOLMO_MAIN_CLASS" "$1" "$TOLMO_TIMEOUT_MS" |
    awk -v class="$2" '$1 == class && $3 == "visible" { print $4, $5, $6, $7; exit }'
}

tolmo_view_rect() {
  tolmo_child_rect "$1" "$TOLMO_VIEW_CLASS"
}

tolmo_status_rect() {
  tolmo_child_rect "$1" msctls_statusbar32
}

# The clipboard. A marker is put there first, so that a copy shows as a change.
tolmo_clipboard() {
  xclip -o -selection clipboard 2>/dev/null
}

tolmo_clipboard_mark() {
  TOLMO_CLIPBOARD_MARK="tolmo-e2e-mark-$RANDOM$RANDOM"
  printf '%s' "$TOLMO_CLIPBOARD_MARK" | xclip -i -selection clipboard >/dev/null 2>&1
  # xclip serves the selection from a child of its own; the marker is there once it reads back.
  tolmo_poll_seconds 5 tolmo_clipboard_is "$TOLMO_CLIPBOARD_MARK"
}

tolmo_clipboard_is() {
  [ "$(tolmo_clipboard)" = "$1" ]
}

tolmo_clipboard_changed() {
  local now
  now="$(tolmo_clipboard)"
  [ -n "$now" ] && [ "$now" != "$TOLMO_CLIPBOARD_MARK" ]
}

# Presses Ctrl+C and prints what reached the clipboard; fails when nothing did within $1 seconds.
tolmo_copy_selection() {
  tolmo_clipboard_mark || return 1
  tolmo_keys ctrl+c
  tolmo_poll_seconds "${1:-10}" tolmo_clipboard_changed || return 1
  tolmo_clipboard
}

# Polls until command "$2..." succeeds, every 0.1 s for up to $1 seconds.
tolmo_poll_seconds() {
  local limit="$1" deadline
  shift
  deadline=$((SECONDS + limit))
  while :; do
    "$@" && return 0
    [ "$SECONDS" -ge "$deadline" ] && return 1
    sleep 0.1
  done
}

# A settled screenshot of the rectangle "left top width height" ($1) to $2, of what the program
# has drawn by now (see tolmo_repaint).
tolmo_shot() {
  tolmo_repaint
  tolmo_screenshot "$1" "$2" "${3:-10}"
}

# Takes settled screenshots of $2 into $3 until "$4... $3" succeeds, for up to $1 seconds. A
# picture can settle before the program has got to the keys, and a paint can take a while on
# Wine's software renderer; so from the second try on the main windows are first asked to paint
# again (see tolmo_repaint), and how many tries a picture took is reported.
tolmo_shot_until() {
  local limit="$1" rect="$2" file="$3" deadline tries=0
  shift 3
  deadline=$((SECONDS + limit))
  while :; do
    [ "$tries" -gt 0 ] && tolmo_repaint
    tolmo_screenshot "$rect" "$file" 5 || true
    if "$@" "$file"; then
      [ "$tries" -gt 0 ] && echo "note: $(basename "$file") took $((tries + 1)) tries"
      return 0
    fi
    [ "$SECONDS" -ge "$deadline" ] && return 1
    tries=$((tries + 1))
  done
}

# Asks every visible main window to paint all of itself again, as uncovering it would, and waits
# until it has; twice, since a paint the program had asked for itself may still be pending and then
# takes the first request in. With Direct3D's command stream on its own thread, Wine has been seen
# to keep the view's previous picture on the screen until the next paint; more paints change
# nothing in the program and bring its last picture out.
tolmo_repaint() {
  tolmo_drive repaint "$TOLMO_MAIN_CLASS" "" 5000 2 >/dev/null 2>&1 || true
}

# Prints pixel x,y of a PNG as "#RRGGBB".
tolmo_pixel() {
  convert "$1" -format "%[hex:p{$2,$3}]" info: | cut -c1-6 | sed 's/^/#/'
}

# True when the PNG ($1) has pixels of the colour $2 ("#RRGGBB") in at least $3 percent of its area.
tolmo_colour_share_at_least() {
  local share
  share="$(tolmo_picture share "$1" "$2" 0)"
  awk -v s="$share" -v m="$3" 'BEGIN { exit !(s + 0 >= m + 0) }'
}

# True when two PNGs of one size differ in more than $3 (default 20) pixels.
tolmo_pictures_differ() {
  local changed
  changed="$(compare -metric AE "$1" "$2" null: 2>&1 | cut -d' ' -f1)" || true
  awk -v c="$changed" -v m="${3:-20}" 'BEGIN { exit !(c + 0 > m + 0) }'
}

# The boxes of the caret's outline (or anything drawn in one colour, $2) in the PNG $1: "left top
# width height" a line, only those at least 4 by 4 pixels. The outline can stand on fractions of a
# pixel, so that only some of its sides keep the exact colour; pixels up to 30 apart count as one
# box, which joins the sides of a box and keeps the hex and the text column's boxes apart.
tolmo_boxes() {
  tolmo_picture boxes "$1" "$2" "${3:-0}" 30 | awk '$3 >= 4 && $4 >= 4 { print $1, $2, $3, $4 }'
}

# Compares the menu bar of the main window titled $1 with a menu bar of the same width that the
# driver draws from the labels given ($2...): Wine lets no other process read a menu, so the two
# are photographed side by side and must be equal to the pixel. Pictures go to $TOLMO_SHOTS.
tolmo_menu_bar_is() {
  local title="$1" out="$TOLMO_SHOTS/reference-menu.txt" driver target reference changed status=0
  shift
  rm -f "$out"
  "$TOLMO_ROOT/scripts/wine-run" "$TOLMO_DRIVER" reference-menu "$TOLMO_MAIN_CLASS" "$title" 30000 "$@" \
    >"$out" 2>&1 &
  driver=$!
  tolmo_poll_seconds 20 grep -q '^reference ' "$out" || { kill "$driver" 2>/dev/null; return 1; }
  # The bar's last row of pixels is left out: Wine draws a bar that replaced another one pixel
  # shorter than a bar given at creation, and the frame's line then shows in that row.
  target="$(tr -d '\r' <"$out" | awk '$1 == "target" { print $2, $3, $4, $5 - 1 }')"
  reference="$(tr -d '\r' <"$out" | awk '$1 == "reference" { print $2, $3, $4, $5 - 1 }')"
  tolmo_shot "$target" "$TOLMO_SHOTS/menu-bar.png"
  tolmo_shot "$reference" "$TOLMO_SHOTS/menu-bar-reference.png"
  tolmo_drive close Tolmo.ReferenceMenu "Tolmo reference menu" 5000 >/dev/null || true
  wait "$driver" 2>/dev/null || true
  changed="$(compare -metric AE "$TOLMO_SHOTS/menu-bar.png" "$TOLMO_SHOTS/menu-bar-reference.png" null: 2>&1 |
    cut -d' ' -f1)" || true
  [ "$changed" = "0" ] || status=1
  [ "$status" -eq 0 ] || echo "menu bar differs from the reference ($changed pixels): $*" >&2
  return "$status"
}
