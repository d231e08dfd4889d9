# For the scripts that make the tests' streams: to be sourced.

# own_folder NAME: ends with an error unless the current folder, which is that, is empty or one that a
# script has made streams in; it may remove all that is there then. What says so is an empty stamp, until
# all are made.
own_folder() {
  [ -e .stamp ] || [ -z "$(ls -A)" ] || {
    echo "${0##*/}: there are other files in \"$1\"" >&2
    exit 1
  }
  : >.stamp
}
