# SPDX-FileCopyrightText: the Tarvell authors
# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash

_tarvell_cli() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local trees="--calfactors --stations --today --within" words=""
  COMPREPLY=()
  case $previous in
    --calfactors | --stations)
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      return
      ;;
    --today | --within | --serial | --calibrated | --due) return ;;
    --decimal)
      mapfile -t COMPREPLY < <(compgen -W "point comma" -- "$current")
      return
      ;;
    --dates)
      mapfile -t COMPREPLY < <(compgen -W "day-first month-first" -- "$current")
      return
      ;;
    -o | --output)
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
      ;;
  esac
  if [ "$COMP_CWORD" -eq 1 ]; then
    words="check due show diff export history import --help --help-all --version"
  elif [[ $current == -* ]]; then
    case ${COMP_WORDS[1]} in
      check) words="$trees --unused --json --quiet --help" ;;
      due) words="$trees --json --quiet --help" ;;
      show | history) words="--json --quiet --help" ;;
      diff) words="--bytes --json --quiet --help" ;;
      import) words="--model --calfactors --serial --calibrated --due --decimal --dates --sure --replace --help" ;;
      export) words="$trees --csv --json --ics --output --help" ;;
    esac
  else
    case ${COMP_WORDS[1]} in
      show | diff | history | import)
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    esac
  fi
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -o filenames -F _tarvell_cli tarvell-cli
