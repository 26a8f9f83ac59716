# shellcheck shell=sh disable=SC2034  # used by who includes this
# The options that ./play and the installed launcher share. Each sets a variable of the game's environment.
#
#     while [ $# -gt 0 ]; do take_option "$@" || break; shift "$taken"; done

# The lines of --help.
options_help='    --ear plain|fine    the ear that listens; fine hears low voices and chords better, plain is the default
    --input NAME        the microphone; NAME is its name or a part of it, as zanto-mic list shows them
    --spectrum          open the panel with the spectrum at the start

In the game, f opens the spectrum and r starts the song again. Both are small Latin letters: with Caps Lock,
or under a Greek, Hebrew or Cyrillic keyboard layout, they do nothing.'

# refuse_option WHAT: ends the program.
refuse_option() {
    echo "${0##*/}: $1; --help shows what there is" >&2
    exit 2
}

# refuse_late_option SONG WORD...: the game would ignore what comes after the song.
refuse_late_option() {
    shift
    case ${1:-} in
    -*) refuse_option "$1 must come before the song" ;;
    esac
}

# take_option WORD...: takes the option that the first word is; the number of words taken is in $taken. Status 1
# where no option comes any more.
take_option() {
    taken=1
    case $1 in
    --ear)
        case ${2:-} in
        plain | fine) ;;
        *) refuse_option "--ear takes plain or fine" ;;
        esac
        export ZANTO_EAR="$2"
        taken=2
        ;;
    --input)
        [ -n "${2:-}" ] || refuse_option "--input takes the name of a microphone, as zanto-mic list shows it"
        export ZANTO_INPUT="$2"
        taken=2
        ;;
    --spectrum) export ZANTO_SPECTRUM=1 ;;
    -?*) refuse_option "unknown option $1" ;;
    *) return 1 ;;
    esac
}
