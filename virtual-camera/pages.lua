-- Serves the console, and the user's own pages (./run --www). "/" is the user's page or, without one, the console.

local kTypes = {
  html = "text/html; charset=utf-8",
  css = "text/css; charset=utf-8",
  js = "text/javascript; charset=utf-8",
  json = "application/json",
  svg = "image/svg+xml",
  png = "image/png",
  ico = "image/x-icon"
}

-- No page of another site may show the console, and it may load nothing but what comes from the camera.
local kConsoleHeaders = {
  ["Content-Security-Policy"] = "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob: data:; " ..
    "connect-src 'self'; media-src 'self'; form-action 'self'; base-uri 'none'; frame-ancestors 'none'",
  ["Cross-Origin-Opener-Policy"] = "same-origin",
  ["Referrer-Policy"] = "same-origin",  -- the guard asks where a request comes from
  ["X-Content-Type-Options"] = "nosniff"
}

local kOwnHeaders = {
  ["X-Content-Type-Options"] = "nosniff",
  ["X-Frame-Options"] = "SAMEORIGIN"
}

local path = lighty.r.req_attr["physical.path"]
if not path:find("^/www/") and not path:find("^/console/") then return end
if path:find("/.", 1, true) then return 404 end  -- .git and the like

if path == "/www/" and not lighty.stat("/www/index.html") then path = "/console/" end
if path:sub(-1) == "/" then path = path .. "index.html" end
lighty.r.req_attr["physical.path"] = path

local headers = path:find("^/console/") and kConsoleHeaders or kOwnHeaders
for name, value in pairs(headers) do lighty.r.resp_header[name] = value end
lighty.r.resp_header["Cache-Control"] = "no-cache"  -- a browser asks whether the file has changed
lighty.r.resp_header["Content-Type"] = kTypes[(path:match("%.(%w+)$") or ""):lower()]
