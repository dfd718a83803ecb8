# Debian packages; sourced by run and test.

build_packages=(
  ca-certificates ccache cmake g++ libcli11-dev libcrypt-dev libicu-dev libpq-dev libsqlite3-dev
  libxcb1-dev mold ninja-build qt6-base-dev qt6-svg-dev qt6-webengine-dev fonts-liberation
)
run_packages=(sqlite3)
package_packages=(binutils dpkg-dev file librsvg2-bin lintian python3-markdown)
test_packages=(
  appstream clang-format clang-tidy desktop-file-utils git libgtest-dev man-db postgresql python3
  shared-mime-info sqlite3
)

# Installs what is missing of the packages named.
install_missing() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed ||
      missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  local root=()
  [ "$(id -u)" = 0 ] || root=(sudo)
  echo "Installing ${missing[*]}"
  "${root[@]}" apt-get update -qq
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
