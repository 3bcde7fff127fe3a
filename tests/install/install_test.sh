#!/usr/bin/env bash
# Installs a build into a scratch prefix and checks what lands there: the programs run, their
# manual pages are found by name, render without a warning of man or groff, fit 80 columns and
# document every switch the programs know.
# Usage: install_test.sh CMAKE BUILD_DIR EXPORT_BUILT(0|1) BINDIR MANDIR VERSION
set -uo pipefail

cmake_command=$1 build_dir=$2 export_built=$3 bindir=$4 mandir=$5 version=$6

failures=0
fail() {
  echo "FAIL: $*" >&2
  failures=$((failures + 1))
}

for dir in "$bindir" "$mandir"; do
  # An absolute directory would install outside the scratch prefix, into the machine itself.
  case $dir in /*) echo "FAIL: install directory $dir is absolute; refusing to install" >&2
                   exit 1 ;;
  esac
done
# Without these the pages cannot be checked; a missing tool is a failure, not a skip.
command -v man >/dev/null 2>&1 || { echo "FAIL: man is missing (apt-get install man-db)" >&2; exit 1; }
command -v groff >/dev/null 2>&1 || { echo "FAIL: groff is missing (apt-get install groff-base)" >&2; exit 1; }

prefix=$(mktemp -d "${TMPDIR:-/tmp}/varnel-install.XXXXXX") || exit 1
trap 'rm -rf "$prefix"' EXIT
export LC_ALL=C.UTF-8
unset DESTDIR MANPATH MANOPT MANPAGER PAGER

if ! "$cmake_command" --install "$build_dir" --prefix "$prefix/root" >"$prefix/install.log" 2>&1; then
  cat "$prefix/install.log" >&2
  echo "FAIL: cmake --install $build_dir --prefix $prefix/root failed" >&2
  exit 1
fi
root=$prefix/root
man1=$root/$mandir/man1

programs=(varnel)
if [ "$export_built" = 1 ]; then
  programs+=(varnel-export)
else
  [ -e "$root/$bindir/varnel-export" ] && fail "varnel-export is installed although it was not built"
  [ -e "$man1/varnel-export.1" ] && fail "varnel-export.1 is installed although varnel-export was not built"
fi

for program in "${programs[@]}"; do
  [ -f "$root/$bindir/$program" ] && [ -x "$root/$bindir/$program" ] ||
    fail "$bindir/$program is missing or not executable"
  page=$man1/$program.1
  if [ ! -f "$page" ]; then
    fail "$mandir/man1/$program.1 is missing"
    continue
  fi
  # The page is found by name under the prefix, as `man $program` finds it once installed.
  found=$(man -M "$root/$mandir" -w "$program" 2>&1)
  [ "$found" = "$page" ] || fail "man -M $root/$mandir -w $program gives '$found', not $page"

  MANWIDTH=80 man --warnings -E UTF-8 -l "$page" >"$prefix/$program.txt" 2>"$prefix/$program.man.err"
  status=$?
  [ $status -eq 0 ] || fail "man -l $program.1 exits with $status"
  if [ -s "$prefix/$program.man.err" ]; then
    fail "man -l $program.1 warns:"
    cat "$prefix/$program.man.err" >&2
  fi
  groff -man -ww -z "$page" 2>"$prefix/$program.groff.err"
  if [ -s "$prefix/$program.groff.err" ]; then
    fail "groff -man -ww $program.1 warns:"
    cat "$prefix/$program.groff.err" >&2
  fi
  for section in NAME SYNOPSIS DESCRIPTION OPTIONS FILES 'EXIT STATUS' DIAGNOSTICS EXAMPLES 'SEE ALSO'; do
    grep -qx "$section" "$prefix/$program.txt" || fail "$program.1 renders no section $section"
  done
  widest=$(wc -L <"$prefix/$program.txt")
  [ "$widest" -le 80 ] || fail "$program.1 renders a line of $widest columns at MANWIDTH=80"
  grep -q "^\.TH .*\"Varnel $version\"" "$page" || fail "$program.1 does not name Varnel $version in .TH"
done

# The tags of the OPTIONS entries of a page, as plain text: "-f format, --format format".
option_tags() {
  awk '/^\.SH /{inside = ($0 ~ /^\.SH OPTIONS/)} inside && previous == ".TP" {print}
       {previous = $0}' "$1" |
    sed -e 's/\\f[BIRP]//g' -e 's/\\-/-/g' -e 's/"//g' -e 's/^\.[BIR]* *//'
}

# Every option a program lists in its own help has an entry in the OPTIONS section of its page.
check_documented() {
  local page=$1 option
  shift
  [ $# -gt 0 ] || fail "$(basename "$page" .1) lists no options"
  for option in "$@"; do
    option_tags "$page" | grep -Eq -- "(^|[ ,])$option(,| |\$)" ||
      fail "$(basename "$page") has no OPTIONS entry for $option"
  done
}

# The installed programs run from anywhere, not only beside the build tree.
cd "$prefix" || exit 1
varnel=$root/$bindir/varnel
if [ -x "$varnel" ]; then
  help=$("$varnel" -h 2>&1)
  status=$?
  [ $status -eq 0 ] || fail "varnel -h exits with $status"
  grep -q 'you must specify at least the' <<<"$help" || fail "varnel -h prints no help: $help"
  # The usage that a run without arguments prints lists the switches as "  -i  specify ...".
  check_documented "$man1/varnel.1" $("$varnel" 2>&1 | sed -n 's/^  \(-[A-Za-z]\)  .*/\1/p')
fi

export_program=$root/$bindir/varnel-export
if [ "$export_built" = 1 ] && [ -x "$export_program" ]; then
  "$export_program" --version >/dev/null 2>&1 || fail "varnel-export --version fails"
  help=$("$export_program" --help 2>&1) || fail "varnel-export --help fails"
  # The option list of the help: "  -f, --format FORMAT  ...", "      --version  ...".
  check_documented "$man1/varnel-export.1" \
    $(sed -n '/^Options:/,/^$/p' <<<"$help" | grep -oE '^ +-[a-z-]+(, --[a-z-]+)?' | tr -d ,)
fi

if [ $failures -gt 0 ]; then
  echo "$failures check(s) failed" >&2
  exit 1
fi
echo "installed and checked: ${programs[*]} and their manual pages"
