# Tests of what goes with the tools, read by tools_test.sh.

# TOOLS.txt tells of every tool and of what is in it: the version that was built, and a folder that
# holds the licence.
test_tools_are_told_of() {
  told=$here/packaging/windows/TOOLS.txt
  while read -r tool recipe; do
    says "$told" "$tool"
    says "$told" "licences\\$recipe"
  done <"$here/packaging/windows/tools.txt"
  # shellcheck disable=SC2046  # a list of names
  "$recipes" --sources "$work/sources" $(awk '{ print $2 }' "$here/packaging/windows/tools.txt" | sort -u)
  for folder in "$work"/sources/*; do
    recipe=$(basename "$folder")
    source=$(sed -n 's/^source=//p' "$folder/$recipe.sh")
    version=$(sed -n 's/^upstream=\(.*really\)*//p' "$folder/$recipe.sh")
    [ -n "$source" ] || continue
    [ -n "$version" ] || fail "$recipe has no version"
    says "$told" "$version"
    says "$told" "licences\\$recipe"
    licences=$("$recipes" --where "$recipe")/licences/$recipe
    [ -s "$licences/copyright" ] || fail "$recipe has not what Debian tells of its authors"
    [ "$(find "$licences" -type f -size +500c | wc -l)" -ge 2 ] || fail "$recipe has no licence"
    find "$folder" -name '*.orig.tar.*' | grep -q . || fail "$recipe has no source"
    [ -z "$(ls "$here/packaging/windows/patches/$recipe" 2>/dev/null)" ] || [ -d "$folder/patches" ] ||
      fail "$recipe's source has not our patches"
  done
  [ "$(find "$work/sources" -name '*.orig.tar.*' | wc -l)" -ge 9 ] || fail 'sources are missing'
}
