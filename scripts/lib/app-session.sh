# Shell functions for driving one copy of tolmo.exe with real keys and clicks on its own display.
# Sourced after scripts/lib/window-session.sh and after setting TOLMO_WINEPREFIX, TOLMO_EXE and
# TOLMO_DRIVER. Requires xdotool, xclip and ImageMagick.

TOLMO_MAIN_CLASS="Tolmo.MainWindow"
TOLMO_TIMEOUT_MS="${TOLMO_TIMEOUT_MS:-60000}"

tolmo_fail() {
  echo "FAILED: $*" >&2
  exit 1
}

tolmo_drive() {
  "$TOLMO_ROOT/scripts/wine-run" "$TOLMO_DRIVER" "$@"
}

# Makes a scratch folder ($1) holding a copy of the program, its strings and the portable marker,
# so the settings file is written beside this copy and no other test sees it.
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

# Starts the scratch copy with the given arguments (already Windows paths).
tolmo_start_copy() {
  tolmo_start_program "$TOLMO_SCRATCH/tolmo.exe" "$@"
}

# Waits for a main window titled $1 and prints its rectangle "left top width height".
tolmo_wait_main() {
  local out
  out="$(tolmo_drive wait "$TOLMO_MAIN_CLASS" "$1" "${2:-$TOLMO_TIMEOUT_MS}")" || return 1
  head -n 1 <<<"$out" | tr -d '\r'
}

# Polls until command "$@" succeeds, for up to $TOLMO_POLL_SECONDS (default 20) seconds.
tolmo_poll() {
  local limit="${TOLMO_POLL_SECONDS:-20}" tick
  for tick in $(seq $((limit * 10))); do
    "$@" && return 0
    sleep 0.1
  done
  return 1
}

# The X window of the Wine window titled exactly $1.
tolmo_x_window() {
  xdotool search --name "^$(sed 's/[][\.*^$]/\\&/g' <<<"$1")\$" 2>/dev/null | head -n 1
}

# Gives the window titled $1 the keyboard: Wine takes keys only through the focused X window.
tolmo_focus() {
  local xwin
  xwin="$(tolmo_poll tolmo_x_window "$1" >/dev/null; tolmo_x_window "$1")"
  [ -n "$xwin" ] || return 1
  xdotool windowactivate --sync "$xwin" 2>/dev/null || true
  xdotool windowfocus --sync "$xwin" 2>/dev/null || true
  sleep 0.2
}

# Sends keys (xdotool names) to whatever has the focus, one at a time so Wine sees each.
tolmo_keys() {
  local key
  for key in "$@"; do
    xdotool key --delay 60 "$key"
  done
}

# Copies the selection and prints the clipboard.
tolmo_copy_selection() {
  tolmo_keys ctrl+c
  sleep 0.3
  xclip -o -selection clipboard 2>/dev/null
}

# Screenshot of the rectangle "left top width height" ($1) to $2, after a short settle.
tolmo_shot() {
  tolmo_screenshot "$1" "$2"
}

# Prints pixel x,y of a PNG as "#RRGGBB".
tolmo_pixel() {
  convert "$1" -format "%[hex:p{$2,$3}]" info: | cut -c1-6 | sed 's/^/#/'
}

# True when the PNG ($1) has pixels of the colour $2 ("#RRGGBB") in at least $3 percent of its area.
tolmo_colour_share_at_least() {
  local share
  share="$(convert "$1" -fill white +opaque "$2" -fill black -opaque "$2" \
    -colorspace Gray -format '%[fx:mean*100]' info:)"
  awk -v s="$share" -v m="$3" 'BEGIN { exit !(s + 0 <= 100 - m) }'
}

# True when two PNGs differ in more than a few pixels.
tolmo_pictures_differ() {
  local changed
  changed="$(compare -metric AE "$1" "$2" null: 2>&1 | cut -d' ' -f1)" || true
  awk -v c="$changed" 'BEGIN { exit !(c + 0 > 20) }'
}
