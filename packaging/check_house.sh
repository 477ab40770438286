#!/usr/bin/env bash
# Holds the includes of src/ against the link lines: each folder's FOLDERS are the folders it includes from, no more and
# no less, and all of them stand before it in src/CMakeLists.txt.
set -euo pipefail
cd "$(dirname "$0")/.."

wrong=0
complain() {
  echo "$1" >&2
  wrong=1
}

below=' '
while read -r folder; do
  linked=$(sed -n 's/^ *FOLDERS //p' "src/$folder/CMakeLists.txt" | tr -d ')' | tr ' ' '\n' | sort)
  included=$(grep -rhoE '^#include "[a-z]+/' --include='*.h' --include='*.cpp' "src/$folder" |
    sed 's/.*"//; s,/$,,' | sort -u | grep -vx "$folder" || true)
  while read -r sign other; do
    case "$sign" in
      '<') complain "src/$folder/CMakeLists.txt: $other is linked and never included" ;;
      '>') complain "src/$folder/CMakeLists.txt: $other is included and not linked" ;;
    esac
  done < <(diff <(echo "$linked") <(echo "$included") | grep '^[<>]' || true)
  for other in $linked; do
    [[ $below == *" $other "* ]] || complain "src/$folder/CMakeLists.txt: $other is no lower floor"
  done
  below+="$folder "
done < <(sed -n 's/^add_subdirectory(\(.*\))$/\1/p' src/CMakeLists.txt)
exit "$wrong"
