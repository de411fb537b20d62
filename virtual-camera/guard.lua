-- Checks every request before the web server does: its form, its host and the site it comes from.

local common = dofile("/etc/camera/common.lua")(lighty)
local refuse, isAllowed = common.refuse, common.isAllowed

local kMethods = { GET = true, HEAD = true, POST = true }
local kMaxTarget = 30 * 1024  -- bytes; lighttpd.conf allows 64 KiB with the headers, and a digest login repeats it
local kMaxLogin = 1024        -- bytes, beside the address that it repeats
local kMaxFields = 200        -- of the header; each entry of a list counts
local kPages = { ["/"] = true, ["/console/"] = true }  -- other sites may link to them
-- These endpoints change nothing, whatever their parameters are.
local kReaders = {
  ["/cgi-bin/audio.cgi"] = true,
  ["/cgi-bin/event_log.cgi"] = true,
  ["/cgi-bin/group_list.cgi"] = true,
  ["/cgi-bin/sdcard_download.cgi"] = true,
  ["/cgi-bin/sdcard_list.cgi"] = true
}
-- These change nothing if "profileid" is the only parameter.
local kProfiles = { ["/cgi-bin/rtspurl.cgi"] = true, ["/cgi-bin/video.cgi"] = true }

local request = lighty.r.req_header
local method = lighty.r.req_attr["request.method"]
local target = lighty.r.req_attr["request.orig-uri"]

-- accounts.lua compares this stamp of the accounts after the login was checked, and bin/answer when the request is
-- complete.
local logins = common.read("/run/accounts/logins")
local stamp, mode = logins:match("^# ([%d.]+) (%l+)\n")
lighty.r.req_env["ACCOUNTS"] = stamp or "none"

-- guarded.conf asks for no login at this address, and accounts.lua does not look for one.
local isOpen = (logins:match("\n# open ([^\n]*)\n") or ""):find(" " .. lighty.r.req_attr["uri.path"] .. " ", 1, true)
lighty.r.req_header["Camera-Open"] = isOpen and "1" or ""
lighty.r.req_env["OPEN"] = isOpen and "1" or ""

-- Returns the host of an authority in lower case, without user and port.
local function hostOf(authority)
  return (authority:gsub("^.*@", ""):gsub(":%d*$", ""):lower())
end

-- True for an IPv4 address as browsers write it. 0.0.0.0 and its network reach the loopback address.
local function isIPv4(host)
  local first = tonumber(host:match("^(%d+)%.%d+%.%d+%.%d+$"))
  if not first or first == 0 then return false end
  for part in host:gmatch("%d+") do
    if tonumber(part) > 255 or part:find("^0%d") then return false end
  end
  return true
end

-- [::] and IPv4 addresses within IPv6 reach the loopback address too.
local function isIPv6(host)
  return host:find("^%[[%x:.]+%]$") and not host:find("^%[[0:]*%]$") and not host:find("^%[[0:]*:ffff:")
end

-- True for an address and for the camera's names. Any other name is rejected, because another site can point its own
-- DNS entry at the camera. The name that camera_info.cgi stores is only a label, not a host name.
local function isOwn(host)
  if isIPv4(host) or isIPv6(host) then return true end
  local machine = (os.getenv("CAMERA_HOSTNAME") or ""):lower()
  for _, name in ipairs({ "localhost", "camera", machine }) do
    if name ~= "" and (host == name or host == name .. ".local") then return true end
  end
  return false
end

-- True for a request with a header that only browsers send. Programs name themselves otherwise; some send
-- Sec-Fetch-Mode.
local function comesFromBrowser()
  for name in pairs(request) do
    name = name:lower()
    if name:find("^sec%-fetch%-") and name ~= "sec-fetch-mode" or name:find("^sec%-ch%-") then return true end
  end
  return request["Upgrade-Insecure-Requests"] ~= nil or (request["User-Agent"] or ""):find("^Mozilla/") ~= nil
end
local isBrowser = comesFromBrowser()

local function fields()
  local count = 0
  for _, value in pairs(request) do
    local _, commas = value:gsub(",", "")
    count = count + 1 + commas
  end
  return count
end

-- True if this header, if there is one, names the camera or an allowed origin. A browser must name the port too, where
-- another site of the same machine may listen.
local function comesFrom(name, host)
  local value = request[name]
  if not value or value == "" then return true end
  local origin, authority = value:match("^(%a[%w+.-]*://([^/?#]*))")
  if not origin then return false end
  if isAllowed(origin) then return true end
  if isBrowser then return authority:lower() == (request["Host"] or ""):lower() end
  return hostOf(authority) == host
end

-- True if the request may change something. Without parameters, no endpoint does.
local function mayChange()
  if method == "POST" and request["Content-Length"] ~= "0" then return true end
  local path, query = lighty.r.req_attr["uri.path"], target:match("%?(.+)$")
  if not query or not path:find("^/cgi%-bin/") then return false end
  return not (kReaders[path] or kProfiles[path] and query:find("^profileid=%d$"))
end

-- True if a browser's request comes from the camera's own page or an allowed one. Without Sec-Fetch-Site, as over HTTP
-- from another machine, Origin or Referer proves that; both were checked.
local function isProven(site)
  if site == "" then return (request["Origin"] or "") ~= "" or (request["Referer"] or "") ~= "" end
  return site == "same-origin" or isAllowed(request["Origin"])
end

-- A browser asks so before it sends another origin's request that is more than a plain form.
local function isPreflight()
  return method == "OPTIONS" and request["Access-Control-Request-Method"] ~= nil and isAllowed(request["Origin"])
end

-- reply.lua adds the origin.
local function answerPreflight()
  lighty.r.resp_header["Access-Control-Allow-Methods"] = "GET, HEAD, POST"
  lighty.r.resp_header["Access-Control-Allow-Headers"] = "Accept, Authorization, Content-Type"
  lighty.r.resp_header["Access-Control-Max-Age"] = "600"
  return 204
end

-- True for a link on another page that opens a page of the camera, which changes nothing. Over HTTP many browsers send
-- no Sec-Fetch headers; then it may be an embedded page too, which pages.lua forbids.
local function isLink()
  if not kPages[target] or method == "POST" or request["Origin"] then return false end
  local mode, dest = request["Sec-Fetch-Mode"], request["Sec-Fetch-Dest"]
  if mode == "navigate" and dest == "document" then return true end
  return not (mode or dest or request["Sec-Fetch-Site"])
end

if target:find("[%c ]") then return refuse(400, "the address holds a space or a control character") end
if #target > kMaxTarget then return refuse(414, "the address and its query have at most " .. kMaxTarget .. " bytes") end
if #(request["Authorization"] or "") > #target + kMaxLogin then
  return refuse(431, "Authorization: at most " .. kMaxLogin .. " bytes more than the address")
end
if not kMethods[method] and not isPreflight() then
  lighty.r.resp_header["Allow"] = "GET, HEAD, POST"
  return refuse(405, "method: GET, HEAD or POST")
end
if fields() > kMaxFields then return refuse(431, "at most " .. kMaxFields .. " header fields") end

local host = hostOf(request["Host"] or "")
if request["Host"] and not isOwn(host) then
  return refuse(403, "Host: the camera's address, or localhost, camera or the machine's name, with or without .local")
end
if method == "OPTIONS" then return answerPreflight() end
-- A web server that asks for no login may still have connections when a password is set.
if os.getenv("CAMERA_GUARD") ~= "/etc/camera/" .. (mode or "") .. ".conf" then
  return refuse(503, "the accounts are being changed; repeat the request")
end
if isLink() then return end
for _, name in ipairs({ "Origin", "Referer" }) do
  if not comesFrom(name, host) then return refuse(403, name .. ": none, or the host that the request is for") end
end
local site = (request["Sec-Fetch-Site"] or ""):lower()
if (site == "cross-site" or site == "same-site") and not isAllowed(request["Origin"]) then
  return refuse(403, "Sec-Fetch-Site: same-origin or none")
end
if isBrowser and mayChange() and not isProven(site) then
  return refuse(403, "a browser may change the camera only from the camera's own page; open /, or use curl")
end
