# For the scripts that make the tests' streams: to be sourced.

# own_folder NAME: ends with an error unless the current folder, which is that, is empty or one that a
# script has made streams in; it may remove all that is there then. What says so is a file beside the
# stamp, which a build that is broken off takes away.
own_folder() {
  [ -e .own ] || [ -e .stamp ] || [ -z "$(ls -A)" ] || {
    echo "${0##*/}: there are other files in \"$1\"" >&2
    exit 1
  }
  : >.own
  : >.stamp
}
