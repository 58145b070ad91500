# shellcheck shell=bash
# Sourced by run, test and bench: what the build needs, and the build. Everything here is quick when nothing changed.

packages=(
  # tools
  g++ cmake ninja-build ccache mold git pkg-config python3
  # windows
  qt6-base-dev qt6-svg-dev libqt6svg6 qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools qt6-translations-l10n libgl-dev
  breeze-icon-theme fonts-noto-cjk
  # data
  libsqlite3-dev sqlite3 unixodbc-dev tdsodbc libicu-dev libsodium-dev
  # sheets, bar codes and pictures
  libzip-dev zlib1g-dev libxlsxwriter-dev libzint-dev libjpeg-dev
  # tests and benchmarks
  libgtest-dev libbenchmark-dev libzbar-dev poppler-utils postgresql odbc-postgresql
)

# Installs the packages that are missing, as root or through sudo; where neither is possible it names them and ends.
install_missing() {
  if ! command -v dpkg-query >/dev/null; then
    echo "This system has no dpkg; the build needs what Debian calls: ${packages[*]}" >&2
    return 0
  fi
  local installed missing=()
  installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${packages[@]}" 2>/dev/null | sed -n 's/^installed //p' || true)
  mapfile -t missing < <(LC_ALL=C comm -23 <(printf '%s\n' "${packages[@]}" | LC_ALL=C sort -u) <(LC_ALL=C sort -u <<<"$installed"))
  [ ${#missing[@]} -gt 0 ] || return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Packages are missing; install them and start again: ${missing[*]}" >&2
      exit 1
    fi
    as_root=(sudo)
  fi
  echo "Installing: ${missing[*]}"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q update
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends "${missing[@]}"
}

# build PRESET: configures when that was never done (later the build itself sees what changed) and builds.
build() {
  [ "build/$1/build.ninja" -nt CMakePresets.json ] || cmake --preset "$1"
  cmake --build "build/$1" -j "$(nproc)"
}
