# Shell functions for running the program's windows on a virtual X display and looking at them.
# Sourced by scripts/show-sample, tests/app/end-to-end.d/case and bench/app/window-figures, after
# setting TOLMO_WINEPREFIX.
# Requires: Xvfb, ImageMagick's import, Wine.

TOLMO_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
TOLMO_XVFB_PID=""
TOLMO_APP_PIDS=()

# Starts Xvfb on a display nobody uses (Xvfb picks it) and exports DISPLAY.
tolmo_start_display() {
  local numberfile number attempt
  numberfile="$(mktemp)"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$numberfile" >/dev/null 2>&1 &
  TOLMO_XVFB_PID=$!
  for attempt in $(seq 200); do
    number="$(tr -dc 0-9 <"$numberfile")"
    if [ -n "$number" ]; then
      rm -f "$numberfile"
      export DISPLAY=":$number"
      return 0
    fi
    kill -0 "$TOLMO_XVFB_PID" 2>/dev/null || break
    sleep 0.05
  done
  rm -f "$numberfile"
  echo "Xvfb did not start" >&2
  return 1
}

tolmo_stop_display() {
  if [ -n "$TOLMO_XVFB_PID" ]; then
    kill "$TOLMO_XVFB_PID" 2>/dev/null || true
    wait "$TOLMO_XVFB_PID" 2>/dev/null || true
    TOLMO_XVFB_PID=""
  fi
}

# Brings up the Wine server and Wine's own background programs for this display, with no output of
# ours: they outlive the command that starts them, and one started from a command substitution or
# a pipe would hold it open to their end.
tolmo_start_wine() {
  "$TOLMO_ROOT/scripts/wine-run" cmd /c exit </dev/null >/dev/null 2>&1 || true
}

# Wine in the prefix of this session, without the chatter.
tolmo_wine() {
  WINEPREFIX="$TOLMO_WINEPREFIX" WINEDEBUG=-all "$@"
}

# Without a window manager nobody draws title bars; Wine then draws them itself if told to manage
# its windows alone. With a window manager (a real desktop) the manager should do it. The prefix
# keeps the choice, so the registry is touched only when it changes; the server writes the
# registry file when it ends, so the file is read once none runs.
tolmo_wine_draws_frames() {
  local managed="N"
  [ "$1" = "no" ] && managed="Y"
  tolmo_wait_for_idle_wine
  if [ -f "$TOLMO_WINEPREFIX/user.reg" ] &&
    awk -v want="\"Managed\"=\"$managed\"" '
      /^\[/ { inside = index($0, "[Software\\\\Wine\\\\X11 Driver]") == 1 }
      inside && $0 == want { found = 1 }
      END { exit !found }' "$TOLMO_WINEPREFIX/user.reg"; then
    return 0
  fi
  "$TOLMO_ROOT/scripts/wine-run" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d "$managed" /f >/dev/null 2>&1
  # The server that wrote it may still run, with no display: programs started on one now would find
  # no way to show a window.
  tolmo_wait_for_idle_wine
}

# Waits until no Wine process of the prefix runs, so that the next one starts on this display.
tolmo_wait_for_idle_wine() {
  timeout 60 env WINEPREFIX="$TOLMO_WINEPREFIX" wineserver -w 2>/dev/null || true
}

# A Unix path as the program sees it: Wine maps drive Z: to the root.
tolmo_windows_path() {
  local path="$1"
  case "$path" in
    /*) ;;
    *) path="$PWD/$path" ;;
  esac
  printf 'Z:%s' "${path//\//\\}"
}

# Starts a Windows program in the background; its pid goes into TOLMO_APP_PIDS and TOLMO_LAST_PID.
tolmo_start_program() {
  "$TOLMO_ROOT/scripts/wine-run" "$@" >/dev/null 2>&1 &
  TOLMO_LAST_PID=$!
  TOLMO_APP_PIDS+=("$TOLMO_LAST_PID")
}

# Waits up to $2 seconds for process $1 to end and returns its exit code (124 if it did not end).
tolmo_wait_exit() {
  local pid="$1" limit="$2" tick
  for tick in $(seq $((limit * 20))); do
    if ! kill -0 "$pid" 2>/dev/null; then
      wait "$pid"
      return $?
    fi
    sleep 0.05
  done
  return 124
}

# Saves the screen area "left top width height" ($1) as a PNG ($2) once the picture has settled:
# shots are taken until two in a row are equal (at most $3 seconds, default 10; the last one is
# kept either way, and the status says whether it settled).
tolmo_screenshot() {
  local left top width height limit="${3:-10}" previous="$2.previous.png" deadline
  # The driver writes Windows line ends.
  read -r left top width height <<<"$(tr -d '\r' <<<"$1")"
  [ "$left" -lt 0 ] && { width=$((width + left)); left=0; }
  [ "$top" -lt 0 ] && { height=$((height + top)); top=0; }
  deadline=$((SECONDS + limit))
  rm -f "$previous"
  while :; do
    # Without date chunks equal pictures give equal files.
    import -window root -crop "${width}x${height}+${left}+${top}" +repage \
      -define png:exclude-chunks=date,time "$2"
    if [ -f "$previous" ] && cmp -s "$2" "$previous"; then
      rm -f "$previous"
      return 0
    fi
    if [ "$SECONDS" -ge "$deadline" ]; then
      rm -f "$previous"
      return 1
    fi
    cp "$2" "$previous"
  done
}

# Ends whatever this session started and left running: its programs, their Wine server, the display.
# The display goes last, once Wine has ended of itself, so that no Wine process loses its display.
tolmo_end_session() {
  local pid left_running=""
  for pid in "${TOLMO_APP_PIDS[@]}"; do
    if kill -0 "$pid" 2>/dev/null; then
      kill "$pid" 2>/dev/null || true
      left_running=yes
    fi
  done
  if [ -n "$left_running" ]; then
    tolmo_wine wineserver -k 2>/dev/null || true
  fi
  tolmo_wait_for_idle_wine
  tolmo_stop_display
}
