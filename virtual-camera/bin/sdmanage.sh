#!/bin/bash
# The SD card, which is a folder here:
#
#   sdmanage.sh format    empties it
#   sdmanage.sh insert    fills a new card with recordings and snapshots, or completes that
#   sdmanage.sh measure   prints how much of it is used as settings, for a factory reset
#   sdmanage.sh folder    prints the path of the product's folder on it, with a slash at the end
#
# It fails outside of the sandbox.
set -eu

readonly kCard=/mnt/usb
readonly kSeen=/var/lib/camera/daemons/card
readonly kFilling=/var/lib/camera/daemons/card-filling  # until a new card is complete
readonly kReady=2 kToInitialise=8 kFormatting=9
readonly kMaxPath=31  # bytes; sdcard_format.cgi cuts the path of the folder that it makes there too

fail() {
  echo "sdmanage.sh: $1" >&2
  exit 1
}
[[ $0 == /usr/lib/camera/bin/sdmanage.sh ]] || fail "runs only inside the camera"

value() { printf %b "$(camera-settings get "$1" "$2" | cut -d = -f 2-)"; }
hasCard() { grep -qE '^has_sdcard *= *1 *(#.*)?$' /etc/camera/product.conf; }

# Prints an empty folder's path if the model is not a plain file name.
folder() {
  local model path
  model=$(value system model)
  LC_ALL=C path=$kCard/$model
  case $model in
    '' | . | .. | */*) echo /var/empty/ ;;
    *) echo "${path:0:kMaxPath}/" ;;
  esac
}

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
  [[ ! -e $kFilling ]] || camera-simulator fill-card "$(folder)"
  : >"$kSeen"
  rm -f "$kFilling"
}

case ${1-} in
  format | insert | measure | folder) "$1" ;;
  *) fail "format, insert, measure or folder" ;;
esac
