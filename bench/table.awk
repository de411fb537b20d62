# Prints the table of bench/run from the lines of bench/in-camera, and compares them with bench/budgets.

# How much more, or how many times as much, a request costs than another one.
function more(request, column, other) {
  return (other, column) in cost ? cost[request, column] - cost[other, column] : "-"
}
function times(request, column, other) {
  return cost[other, column] + 0 ? sprintf("%.2f", cost[request, column] / cost[other, column]) : "-"
}

function exceeds(what, value, budget) {
  if (value + 0 <= budget + 0) return
  printf "over budget: %s: %s, allowed %s\n", what, value, budget
  over = 1
}
function checkCost(request, column, most, other) {
  if (!((request, column) in cost)) {
    print "not measured: " request
    over = 1
  }
  exceeds(column " of " request " more than " other, more(request, column, other), most)
}

BEGIN {
  columns = split("request status instructions calls syncs cpu wall peak faults", name)
  format = "| %-29s | %6s | %6s | %7s | %6s | %7s | %8s | %6s | %12s | %12s | %11s | %5s | %12s | %5s |\n"
}
FILENAME ~ /budgets$/ {
  if ($1 !~ /^#/ && NF == 4) budget[++budgets] = $0
  next
}
NF != columns || $2 == 500 || $3 !~ /^[0-9]+$/ || $4 == 0 {
  print "not measured: " $0
  over = 1
  next
}
{
  requests[++count] = $1
  for (i = 2; i <= columns; ++i) cost[$1, name[i]] = $i
}
END {
  printf format, "request", "status", "CPU us", "/ glibc", "/ musl", "wall us", "peak KiB", "faults", "instructions",
         "beyond glibc", "beyond musl", "calls", "beyond glibc", "syncs"
  rule = sprintf(format, "", "", "", "", "", "", "", "", "", "", "", "", "", "")
  gsub(/  /, "--", rule)
  gsub(/- \|/, "--|", rule)
  printf "%s", rule
  for (i = 1; i <= count; ++i) {
    r = requests[i]
    printf format, r, cost[r, "status"], cost[r, "cpu"], times(r, "cpu", "empty-glibc"), times(r, "cpu", "empty-musl"),
           cost[r, "wall"], cost[r, "peak"], cost[r, "faults"], cost[r, "instructions"],
           more(r, "instructions", "empty-glibc"), more(r, "instructions", "empty-musl"), cost[r, "calls"],
           more(r, "calls", "empty-glibc"), cost[r, "syncs"]
  }
  printf "camera-cgi: %d bytes\n", bytes

  exceeds("bytes of camera-cgi", bytes, maxBytes)
  if (maxRatio) exceeds("CPU time of httpport.cgi / empty-glibc", times("httpport.cgi", "cpu", "empty-glibc"), maxRatio)
  for (i = 1; i <= budgets; ++i) {
    split(budget[i], word)
    own[word[1], word[2]] = 1
    if (word[1] != "*") checkCost(word[1], word[2], word[3], word[4])
  }
  for (i = 1; i <= budgets; ++i) {
    split(budget[i], word)
    if (word[1] != "*") continue
    for (j = 1; j <= count; ++j) {
      r = requests[j]
      if (r ~ /^[a-z_]*\.cgi$/ && !((r, word[2]) in own)) checkCost(r, word[2], word[3], word[4])
    }
  }
  exit check && over
}
