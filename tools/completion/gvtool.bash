# bash completion for gvtool: commands, their operations and options, classes.
_gvtool() {
  # Plain COMP_WORDS, so that the script needs no completion helper package.
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]} cword=$COMP_CWORD
  local words=("${COMP_WORDS[@]}")
  local commands="dump convert sort path url date money"
  local classes="string long buffer long-array string-array array"
  case $prev in
    --archive | --class) COMPREPLY=($(compgen -W "$classes date" -- "$cur")); return ;;
    --from | --to) COMPREPLY=($(compgen -W "text archive" -- "$cur")); return ;;
    --encoding) COMPREPLY=($(compgen -W "utf-8 cp1252" -- "$cur")); return ;;
    --drive | --lcid | --taken | --reusable) return ;;
  esac
  local command="" op="" i
  for ((i = 1; i < cword; i++)); do
    case ${words[i]} in
      --drive | --encoding) ((i++)) ;;
      -*) ;;
      *) if [ -z "$command" ]; then command=${words[i]}; elif [ -z "$op" ]; then op=${words[i]}; fi ;;
    esac
  done
  case $command in
    "") COMPREPLY=($(compgen -W "$commands --drive --encoding --version --help" -- "$cur")) ;;
    dump) COMPREPLY=($(compgen -W "--archive --json --help" -- "$cur") $(compgen -f -- "$cur")) ;;
    convert) COMPREPLY=($(compgen -W "--from --to --class --help" -- "$cur") $(compgen -f -- "$cur")) ;;
    sort) COMPREPLY=($(compgen -W "--lcid --reverse --json --help" -- "$cur") $(compgen -f -- "$cur")) ;;
    path) [ -z "$op" ] && COMPREPLY=($(compgen -W "name ext dir parent volume explode is-legal make-legal
      make-legal-name unique relative url-relative full available" -- "$cur")) ;;
    url) [ -z "$op" ] && COMPREPLY=($(compgen -W "scheme host is-legal make-legal file-url compare" -- "$cur")) ;;
    date) [ -z "$op" ] && COMPREPLY=($(compgen -W "week text parts" -- "$cur")) ;;
  esac
}
complete -F _gvtool gvtool
