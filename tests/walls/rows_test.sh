#!/bin/sh
# Only src/project splits the project's rows, and builders, checks and the runner read the disc
# instead of them: what they see is what project/disc_of.h makes.
set -eu
cd "$(dirname -- "$0")/../.."

# Splitting at what rows are joined with. A filter of a file dialog is no row, and neither
# is a line of the menu maker's own files.
splits="split\\([^;]*, *('[/|,]'|'\\\\t'|\"[/|,]\"|\"\\\\t\")\\)"
lists='(List1|List11|chapters|delay|subtitledata|subtitleoptions|postinfo|menulist|moremenuoptions|menubuttons|buttondata|languagetags|firstplay)'
rows="\\b(p|doc\\.p|doc_\\.p)\\.$lists\\b"

# The rules themselves: a rule that finds nothing anywhere would let everything pass.
for sample in "split(row, '/')" "split(doc.p.chapters[0], ',')" 'split(row, "|")' "split(row, '\\t')"; do
  printf '%s\n' "$sample" | grep -qE "$splits" || {
    echo "the rule does not find: $sample" >&2
    exit 1
  }
done
printf 'for (auto& row : p.List11)\n' | grep -qE "$rows" || {
  echo "the rule does not find a row" >&2
  exit 1
}
grep -rqE "$splits" src/project || {
  echo "the rule does not find what src/project splits" >&2
  exit 1
}

status=0
if grep -rnE "$splits" src/runner src/examine src/tools src/import src/menus src/authoring src/ui src/apps |
  grep -vE '^src/(ui/widgets/file_filter|menus/maker/menu_(design|memory))\.cpp:'; then
  echo "Rows are split in src/project alone: call their owner there." >&2
  status=1
fi
if grep -rnE "$rows" src/runner src/examine src/import src/authoring src/apps; then
  echo "These rooms read the disc (project/disc_of.h), not rows." >&2
  status=1
fi
exit $status
