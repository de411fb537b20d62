-- Checks every request before the web server does: its form, its host and the site it comes from.

local kMethods = { GET = true, HEAD = true, POST = true }
local kMaxTarget = 60 * 1024  -- bytes; lighttpd.conf allows 64 KiB with the headers
local kMaxFields = 200        -- of the header; each entry of a list counts

local request = lighty.r.req_header

local function refuse(status, message)
  lighty.r.resp_header["Content-Type"] = "text/plain; charset=utf-8"
  lighty.r.resp_body.set("error=" .. status .. "\nmessage=" .. message .. "\n")
  return status
end

-- Returns the host of an authority in lower case, without user and port.
local function hostOf(authority)
  return (authority:gsub("^.*@", ""):gsub(":%d*$", ""):lower())
end

-- True for an address and for the camera's names. Any other name is rejected, because another site can point its own
-- DNS entry at the camera. The name that camera_info.cgi stores is only a label, not a host name.
local function isOwn(host)
  if host:match("^%d+%.%d+%.%d+%.%d+$") or host:match("^%[[%x:.]+%]$") then return true end
  local machine = (os.getenv("CAMERA_HOSTNAME") or ""):lower()
  for _, name in ipairs({ "localhost", "camera", machine }) do
    if name ~= "" and (host == name or host == name .. ".local") then return true end
  end
  return false
end

local function fields()
  local count = 0
  for _, value in pairs(request) do
    local _, commas = value:gsub(",", "")
    count = count + 1 + commas
  end
  return count
end

local function comesFrom(name, host)
  local value = request[name]
  if not value or value == "" then return true end
  local authority = value:match("^%a[%w+.-]*://([^/?#]*)")
  return authority ~= nil and hostOf(authority) == host
end

local target = lighty.r.req_attr["request.orig-uri"]
if target:find("[%c ]") then return refuse(400, "the address holds a space or a control character") end
if #target > kMaxTarget then return refuse(414, "the address and its query have at most " .. kMaxTarget .. " bytes") end
if not kMethods[lighty.r.req_attr["request.method"]] then
  lighty.r.resp_header["Allow"] = "GET, HEAD, POST"
  return refuse(405, "method: GET, HEAD or POST")
end
if fields() > kMaxFields then return refuse(431, "at most " .. kMaxFields .. " header fields") end

local host = hostOf(request["Host"] or "")
if request["Host"] and not isOwn(host) then return refuse(403, "Host: an address, localhost or the camera's name") end
for _, name in ipairs({ "Origin", "Referer" }) do
  if not comesFrom(name, host) then return refuse(403, name .. ": none, or the host that the request is for") end
end
local site = (request["Sec-Fetch-Site"] or ""):lower()
if site == "cross-site" or site == "same-site" then return refuse(403, "Sec-Fetch-Site: same-origin or none") end
