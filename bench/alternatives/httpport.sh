read -r line <"${0%/*}/settings"
reply="httpport=${line#*=}"
printf 'Status: 200 OK\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: %d\r\n\r\n%s\n' \
  $((${#reply} + 1)) "$reply"
