# shellcheck shell=bash
# What the commands at the root share: packages and builds. To be sourced; goes to the root of the tree.
#
# A command that has nothing to install and nothing to build says nothing of either and is quick.

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

# The packages of the groups given, one a line.
packages_of() {
  awk -v wanted=" $* " '
    { sub(/#.*/, "") }
    /^\[/ { group = substr($1, 2, length($1) - 2); next }
    NF && index(wanted, " " group " ") { print $1 }' packaging/packages.txt
}

missing_packages() {
  local -A installed=()
  local state name
  while read -r state name; do
    [[ $state == installed ]] && installed[$name]=1
  done < <(packages_of "$@" | xargs dpkg-query -W -f "\${db:Status-Status} \${Package}\n" 2>/dev/null)
  while read -r name; do
    [[ -v installed[$name] ]] || echo "$name"
  done < <(packages_of "$@")
}

as_root() {
  if ((EUID == 0)); then "$@"; else sudo "$@"; fi
}

# need_packages <group>...: installs what is missing.
need_packages() {
  if ! command -v apt-get dpkg-query >/dev/null; then
    echo "This is no Debian system; the libraries of packaging/packages.txt must be there already." >&2
    return
  fi
  local missing
  mapfile -t missing < <(missing_packages "$@")
  if ((${#missing[@]} == 0)); then return; fi
  echo "Installing ${missing[*]}"
  local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3)
  as_root "${apt[@]}" update
  as_root "${apt[@]}" install --no-install-recommends "${missing[@]}"
}

# build_preset <preset> [target]...: configures where needed and builds.
build_preset() {
  local preset=$1
  shift
  local dir=build/$preset
  mkdir -p "$dir"
  # The launcher is read at the first configuration only.
  if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
  if [[ ! -e $dir/build.ninja || CMakePresets.json -nt $dir/build.ninja ]]; then
    # In CI nobody changes a line, so the whole counts. The lint reads each file by itself there, too.
    local unity=()
    if [[ -n ${CI-} && $preset != tidy ]]; then unity=(-DVELDRIN_UNITY=ON); fi
    cmake --preset "$preset" "${unity[@]}"
  fi
  # Ninja is not told how many jobs to run: it takes the cores that there are.
  local targets=()
  if (($# > 0)); then targets=(--target "$@"); fi
  NINJA_STATUS="[%f/%t] " cmake --build --preset "$preset" "${targets[@]}" |
    { grep -v -e '^ninja: no work to do\.$' -e 'Re-checking globbed directories' || true; }
}

# make_sample <program directory>: makes a whole program directory with the sample catalogue, once, from the builds
# of the preset app. The program in it is brought up to date at every call.
make_sample() {
  local dir=$1 built=build/app
  build_preset app veldrin ready_made help_pages paint_samples make_sample
  mkdir -p "$dir"
  cp -u "$built/bin/veldrin" "$dir/veldrin"
  cp -u "$built/libexec/veldrin/veldrin-music" "$dir/veldrin-music"
  cp -ru "$built/share/veldrin/help" "$dir/"
  "$built/tools/samples/paint_samples" build/sample-photos
  "$built/tools/samples/make_sample" "$dir" "$built/share/veldrin/Database" build/sample-photos
}
