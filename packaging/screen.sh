# shellcheck shell=bash
# A screen for a machine that has none. To be sourced, after setup.sh.
#
# The screen is served by VNC on the loopback address only and behind a password made for this run: whoever reaches
# the window reaches the user's files. Qt's own VNC platform listens on every address without a password.

# with_screen <program> [argument]...: runs the program on the desktop's screen, otherwise on one served by VNC.
with_screen() {
  if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
    "$@"
    return
  fi
  need_packages screen
  local private
  private=$(mktemp -d)
  serve_screen "$private"
  local status=0
  "$@" || status=$?
  stop_screen "$private"
  return "$status"
}

serve_screen() {
  local private=$1 password cookie
  password=$(od -An -N6 -tx1 /dev/urandom | tr -d ' \n' | cut -c1-8)
  cookie=$(od -An -N16 -tx1 /dev/urandom | tr -d ' \n')
  echo "$password" | tigervncpasswd -f >"$private/password"
  # A cookie under the wild card serves whatever display number the server finds free.
  export XAUTHORITY=$private/authority
  touch "$XAUTHORITY"
  echo "add :0 . $cookie" | xauth -q

  mkfifo "$private/display"
  Xtigervnc -displayfd 3 -localhost -SecurityTypes VncAuth -PasswordFile "$private/password" \
    -auth "$XAUTHORITY" -nolisten tcp -geometry "${VELDRIN_SCREEN:-1280x900}" -depth 24 \
    3<>"$private/display" >"$private/log" 2>&1 &
  screen_pid=$!
  # shellcheck disable=SC2064  # the directory as it is now
  trap "stop_screen '$private'" EXIT
  local number
  if ! read -r -t 20 number <>"$private/display"; then
    cat "$private/log" >&2
    echo "No screen: there is no display, and the VNC server did not start." >&2
    exit 1
  fi
  echo "add :$number . $cookie" | xauth -q
  export DISPLAY=:$number
  openbox --sm-disable >>"$private/log" 2>&1 &
  echo "There is no display, so the window is served by VNC on 127.0.0.1:$((5900 + number)), password $password"
}

stop_screen() {
  trap - EXIT
  kill "$screen_pid" 2>/dev/null || true
  wait "$screen_pid" 2>/dev/null || true
  rm -rf "$1"
}
