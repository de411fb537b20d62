local file = io.open(arg[0]:match("^.*/") .. "settings")
local reply = "httpport=" .. file:read("l"):match("=(.*)") .. "\n"
io.write("Status: 200 OK\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: ", #reply, "\r\n\r\n", reply)
