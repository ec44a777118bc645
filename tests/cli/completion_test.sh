#!/usr/bin/env bash
# The bash and zsh completions of halvard, as a user pressing Tab meets them: commands,
# subcommands, the options of the command typed so far, the choices of an argument, and files
# after an option that takes a value. The zsh one is checked when zsh is installed.
# Usage: completion_test.sh BASH_COMPLETION ZSH_COMPLETION
set -u
source "$1"
zsh_completion=$2
passed=0
failed=0
# check EXPECTED WORD...: the completions offered for the last WORD
check() {
  local expected=$1
  shift
  COMP_WORDS=("$@")
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  COMPREPLY=()
  _halvard
  if [ "${COMPREPLY[*]}" == "$expected" ]; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    printf 'FAILED: %s\n--- expected\n%s\n--- actual\n%s\n' "$*" "$expected" "${COMPREPLY[*]}"
  fi
}

check "scan schedule screen" halvard sc
check "config" halvard --config settings.ini con
check "show set" halvard config s
check "--list" halvard scan --li
check "--help --json --view" halvard boxes --
check "buy belowstoploss" halvard scan b
check "rs" halvard rank r
check "--save-inc --save-results" halvard batch --list mine --sa
check "--separate" halvard batch --list scan --se
check "--skip-existing" halvard --stock-dir /tmp download --sk
check "--version" halvard --vers
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
touch "$scratch/chart.svg"
check "$scratch/chart.svg" halvard chart AMD -o "$scratch/ch"

# zshcheck EXPECTED WORD...: what the zsh completion hands to compadd (which itself keeps those
# that start with the word typed) for the last WORD.
zshcheck() {
  local expected=$1 actual
  shift
  actual=$(zsh -fc 'compadd() { shift; print -r -- "$*"; }; _files() { print FILES; }
    words=("$@"); CURRENT=${#words}; PREFIX=${words[CURRENT]}; source "$0"' "$zsh_completion" "$@")
  if [ "$actual" == "$expected" ]; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    printf 'FAILED: zsh %s\n--- expected\n%s\n--- actual\n%s\n' "$*" "$expected" "$actual"
  fi
}
if command -v zsh >/dev/null; then
  zshcheck "show get set" halvard --config settings.ini config s
  zshcheck "--help --jobs --json --list --save -h" halvard scan --li
  zshcheck "FILES" halvard chart AMD -o ch
  zshcheck "--corvane --help --jobs --json --list --pyramiding --rs --rs-days --save-inc --save-results --separate --stoploss --walk-forward -h" \
    halvard batch --list scan --se
fi

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
