-- Gives files of the card their own names, in which the web server takes every control character for a "_".

local path = lighty.r.req_attr["request.orig-uri"]:match("^/volumes/local/([^?]*)")
if not path then return end
path = path:gsub("%%(%x%x)", function(code) return string.char(tonumber(code, 16)) end)
if not path:find("%c") then return end
-- Nothing has looked at this path yet.
if path:find("\0") or ("/" .. path .. "/"):find("/%.?%.?/") then return 404 end
lighty.r.req_attr["physical.path"] = os.getenv("CAMERA_CARD") .. path
