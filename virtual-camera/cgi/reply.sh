# What the web server's programs need to reply.

# Ends with a refusal: "refuse 'CODE REASON' MESSAGE".
refuse() {
  printf 'Status: %s\r\nContent-Type: text/plain; charset=utf-8\r\n\r\nerror=%s\nmessage=%s\n' "$1" "${1%% *}" \
    "$(tr -d '\000-\037\177' <<<"$2")"
  exit
}
