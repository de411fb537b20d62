-- Serves the user's own pages (./run --www), and an answer to "/" where these have none.

local kTypes = {
  html = "text/html; charset=utf-8",
  css = "text/css; charset=utf-8",
  js = "text/javascript; charset=utf-8",
  json = "application/json",
  svg = "image/svg+xml",
  png = "image/png",
  ico = "image/x-icon"
}

local path = lighty.r.req_attr["physical.path"]
if not path:find("^/www/") then return end
if path:find("/.", 1, true) then return 404 end  -- .git and the like

-- No page of another site may show these, or load them as what they are not.
lighty.r.resp_header["X-Frame-Options"] = "SAMEORIGIN"
lighty.r.resp_header["X-Content-Type-Options"] = "nosniff"

if path == "/www/" and not lighty.stat("/www/index.html") then
  local host = lighty.r.req_header["Host"] or lighty.r.req_attr["request.server-addr"]
  local address = host:gsub("^.*@", ""):gsub(":%d*$", "") .. ":" .. os.getenv("CAMERA_PORT")
  lighty.r.resp_header["Content-Type"] = "text/plain; charset=utf-8"
  lighty.r.resp_body.set("The camera answers on http://" .. address .. "/cgi-bin/info.cgi\n")
  return 200
end

if path:sub(-1) == "/" then path = path .. "index.html" end
lighty.r.req_attr["physical.path"] = path
lighty.r.resp_header["Content-Type"] = kTypes[(path:match("%.(%w+)$") or ""):lower()]
