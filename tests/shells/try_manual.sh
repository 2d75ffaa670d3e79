#!/bin/sh
# The manual page is free of warnings and names every option that a command's --help names.
#   try_manual.sh PAGE PROGRAM
set -eu
program=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
shown=$folder/shown
page=$folder/vellumtide.1  # mandoc takes the section from the name
case $1 in
  *.gz) gzip -dc "$1" >"$page" ;;
  *) cat "$1" >"$page" ;;
esac

complaints=$(groff -ww -man -Tutf8 -z "$page" 2>&1; mandoc -T lint -W warning "$page" || true)
[ -z "$complaints" ] || { echo "$complaints" >&2; exit 1; }

mandoc -T ascii "$page" | sed 's/.\x08//g' >"$shown"
commands=$("$program" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p' | grep -v project)
[ -n "$commands" ]
for command in $commands "project new" "project show" "project render"; do
  # shellcheck disable=SC2086  # two words for a command of a project
  options=$("$program" help $command | sed -n 's/^ .*\(--[a-z-]*\).*/\1/p' | sort -u)
  [ -n "$options" ] || { echo "$command: its help shows no option" >&2; exit 1; }
  for option in $options; do
    sed -n "/^   $command\$/,/^   [a-z]/p" "$shown" | grep -q -- "^  .*$option" || {
      [ "$option" = --help ] || { echo "$command: the page leaves $option out" >&2; exit 1; }
    }
  done
done
