# Sourced by the other scripts.
#
# need PACKAGE...: installs those of the Debian packages that are missing. Says nothing when all are
# there; shows what the package manager printed only when it fails.
# shellcheck shell=sh

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

is_installed() {
  [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

need() {
  if ! command -v apt-get >/dev/null; then
    echo "This is no Debian: please see yourself that you have what these packages hold: $*"
    return 0
  fi
  missing=
  for package in "$@"; do
    is_installed "$package" || missing="$missing $package"
  done
  [ -n "$missing" ] || return 0

  echo "Installing$missing"
  log=$(mktemp)
  # shellcheck disable=SC2086 # one word a package
  if as_root apt-get update -qq >"$log" 2>&1 </dev/null &&
     as_root env DEBIAN_FRONTEND=noninteractive \
       apt-get install -y -qq --no-install-recommends $missing >>"$log" 2>&1 </dev/null; then
    rm -f "$log"
  else
    cat "$log" >&2
    rm -f "$log"
    return 1
  fi
}
