-- Serves card files whose names hold control characters, which the web server replaces by "_".

if not lighty.r.req_attr["uri.path"]:find("^/volumes/local/") then return end  -- the account was checked for that
local path = lighty.r.req_attr["request.orig-uri"]:match("^/volumes/local/([^?]*)")
if not path then return end
path = path:gsub("%%(%x%x)", function(code) return string.char(tonumber(code, 16)) end)
if not path:find("%c") then return end
-- The web server has checked its own path, not this one.
if path:find("\0") or ("/" .. path .. "/"):find("/%.?%.?/") then return 404 end
lighty.r.req_attr["physical.path"] = os.getenv("CAMERA_CARD") .. path
