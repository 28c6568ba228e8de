# bash completion of velaenc and carrier-check.  Options, layouts, channels and encoder arguments are
# what the programs themselves tell, so that they are never behind.

# _velaenc_section HEADING: the indented lines below it in the help.
_velaenc_section() {
    velaenc --help 2>/dev/null | sed -n "/^All available $1:/,/^[^ ]/{/^ /p}"
}

_velaenc_options() { # -f and --frame_size, as two words
    velaenc --help 2>/dev/null | sed -n 's/^  \(-.\) \(--[a-z_-]*\)\t.*/\1\n\2/p; s/^  \(-.\) --.* .*\t.*/\1/p'
}

_velaenc_arguments() { # each with its opening bracket
    velaenc -p Vela-Codec help 2>/dev/null | sed -n '/^Arguments for/,$s/^ \([a-z._]*(\).*/\1/p'
}

_velaenc_words() { # WORDS: those that go on with the current word
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

_velaenc_files() {
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
    compopt -o filenames 2>/dev/null
}

# Bash takes ":" and "=" for ends of words: sets `current` to all behind the last blank, `head` to what
# of it bash will not replace, and `previous`.
_velaenc_current() {
    local line=${COMP_LINE:0:COMP_POINT}
    current=${line##*[[:space:]]}
    head=
    if [[ $COMP_WORDBREAKS == *"$1"* && $current == *"$1"* ]]; then
        head=${current%"$1"*}$1
    fi
    line=${line%"$current"}
    read -ra words <<<"$line"
    previous=${words[-1]}
}

_velaenc() {
    local current head previous words file
    _velaenc_current :
    case $previous in
        -i | --input)
            if [[ $current == *:* ]]; then
                file=${current#*:}
                mapfile -t COMPREPLY < <(compgen -f -P "${current%%:*}:" -- "$file")
                compopt -o filenames 2>/dev/null
            else
                _velaenc_words "$(_velaenc_section channels | sed 's/^ *\([^ ]*\).*/\1:/')"
                compopt -o nospace 2>/dev/null
            fi
            ;;
        -l | --layout) _velaenc_words "$(_velaenc_section 'speaker layouts')" ;;
        -p | --profile) _velaenc_words Vela-Codec ;;
        -a | --argument)
            current=${current#[\"\']}
            _velaenc_words "$(_velaenc_arguments)"
            compopt -o nospace 2>/dev/null
            ;;
        -L | --lowpass) _velaenc_words 'none fir( iir(' ;;
        -s | --naming_scheme) _velaenc_words 'vela NHK' ;;
        -m | --multi-channel-export) _velaenc_words 'true false' ;;
        -d | --downmix | -o | --output | -O) _velaenc_files ;;
        -f | --frame_size | -j | --threads | -n | --frame_count | -r | --sample_rate | -P | --progress) ;;
        *) _velaenc_words "$(_velaenc_options)" ;;
    esac
    COMPREPLY=("${COMPREPLY[@]#"$head"}")
}

_carrier_check() {
    local current head previous words
    _velaenc_current =
    case $previous in
        --layout) _velaenc_words "$(_velaenc_section 'speaker layouts')" ;;
        --frame-size) ;;
        --rebuild) _velaenc_files ;;
        --original)
            if [[ $current == *=* ]]; then
                mapfile -t COMPREPLY < <(compgen -f -P "${current%%=*}=" -- "${current#*=}")
                compopt -o filenames 2>/dev/null
            else
                _velaenc_words "$(_velaenc_section channels | sed 's/^ *\([^ ]*\).*/\1=/')"
                compopt -o nospace 2>/dev/null
            fi
            ;;
        *)
            if [[ $current == -* ]]; then
                _velaenc_words "$(carrier-check --help | sed -n 's/^  \(--[a-z-]*\).*/\1/p')"
            else
                _velaenc_files
            fi
            ;;
    esac
    COMPREPLY=("${COMPREPLY[@]#"$head"}")
}

complete -F _velaenc velaenc
complete -F _carrier_check carrier-check
