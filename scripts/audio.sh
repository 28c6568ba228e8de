# Sourced by the scripts that make audio. They set the folder, seconds and rate of the result, after how
# many seconds a voice speaks again (every), and by how many dB a mix is louder than its parts (louder).
#
# The same bytes come out each time: `sox -R` fixes its random numbers. Everything between is 32 bits
# wide, and gains are odd, so that the 24 bits of the result are full although the recordings have 16.
# shellcheck shell=sh disable=SC2154

voices=/usr/share/sounds/alsa # the recordings in which alsa-utils speaks the name of each speaker
mkdir -p "$folder"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# stem NAME INPUT EFFECT...: a part of the mix, brought to the whole length
stem() {
  name=$1 input=$2
  shift 2
  sox -R -V1 "$input" -r "$rate" -c 1 -b 32 -e signed-integer "$work/$name.wav" "$@" trim 0 "$seconds"
}

# voice NAME RECORDING DELAY: speaks again and again, for the first time after DELAY
voice() {
  stem "$1" "$voices/$2.wav" gain -1.37 pad "$3" "$every" trim 0 "$every" repeat -
}

# channel NAME GAIN STEM [GAIN STEM]...: the mix of one loudspeaker
channel() {
  out=$folder/$1.wav
  shift
  inputs=-n # silence, since a mix wants two inputs
  while [ $# -gt 0 ]; do
    inputs="$inputs -v $1 $work/$2.wav"
    shift 2
  done
  # shellcheck disable=SC2086 # one word an argument
  sox -R -V2 -m -r "$rate" -c 1 $inputs -b 24 -e signed-integer "$out" trim 0 "$seconds" gain "$louder"
}
