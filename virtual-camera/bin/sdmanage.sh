#!/bin/bash
# The SD card, which is a folder here:
#
#   sdmanage.sh format    empties it
#   sdmanage.sh insert    fills a new card with recordings and snapshots, or completes that
#   sdmanage.sh measure   prints how much of it is used as settings, for a factory reset
#
# It fails outside of the sandbox.
set -eu

readonly kCard=/mnt/usb
readonly kSeen=/var/lib/camera/daemons/card
readonly kFilling=/var/lib/camera/daemons/card-filling  # until a new card is complete
readonly kReady=2 kToInitialise=8 kFormatting=9

fail() {
  echo "sdmanage.sh: $1" >&2
  exit 1
}
[[ $0 == /usr/lib/camera/bin/sdmanage.sh ]] || fail "runs only inside the camera"

value() { printf %b "$(camera-settings get "$1" "$2" | cut -d = -f 2-)"; }
hasCard() { grep -qE '^has_sdcard *= *1 *(#.*)?$' /etc/camera/product.conf; }

measure() {
  local total used
  total=$(sed -n 's/^sd total=//p' /etc/camera/factory-settings)
  [[ $total ]] || return 0
  used=$(du -sk --apparent-size "$kCard" | cut -f 1)
  echo "sd used=$used"
  echo "sd free=$((used < total ? total - used : 0))"
}

format() {
  camera-settings set sd state=$kFormatting
  trap 'camera-settings set sd state=$kToInitialise' EXIT
  find "$kCard" -xdev -mindepth 1 -delete
  sleep 1  # a real card takes time too; meanwhile clients see the state
  camera-settings set sd used=0 "free=$(value sd total)" state=$kReady
  trap '' EXIT
}

insert() {
  hasCard && [[ ! -e $kSeen ]] || return 0
  [[ $(ls -A "$kCard") ]] || : >"$kFilling"
  [[ ! -e $kFilling ]] || camera-simulator fill-card "$(cardFolder)"
  : >"$kSeen"
  rm -f "$kFilling"
}

case ${1-} in
  format | insert | measure) "$1" ;;
  *) fail "format, insert or measure" ;;
esac
