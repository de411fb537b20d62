-- Refuses what the access list does not grant to the account that has logged in. What it does not name is for the
-- administrator. A name is looked up as mod_cgi will find it: with the path decoded, and without what follows it.

local common = dofile("/etc/camera/common.lua")(lighty)
local refuse, read = common.refuse, common.read

local kLogins = "/run/accounts/logins"  -- as refreshAccounts writes it
local kAccess = "/etc/camera/access"

-- Returns the second word of the line that begins with this name.
local function listed(name)
  for line in read(kAccess):gmatch("[^\n]+") do
    local first, class = line:match("^(%S+) +(%l+)$")
    if first == name then return class end
  end
end

local function classOf(path)
  if path:find("^/www/") or path:find("^/console/") or path == "/run/camera/openapi.json" then return "any" end
  if path:find("^/picture/") then return "video" end
  if path == "/services/events" then return "notify" end
  local endpoint = path:match("^/cgi%-bin/([^/]+)")
  return endpoint and listed(endpoint) or "administrator"
end

if lighty.r.req_env["OPEN"] == "1" then return end

local logins = read(kLogins)
local stamp, administrator, privileges =
  logins:match("^# ([%d.]+) guarded\n# administrator ([^\n]*)\n# privileges ([^\n]*)\n")
-- Otherwise the name may belong to somebody else by now.
if not stamp or lighty.r.req_env["ACCOUNTS"] ~= stamp then
  return refuse(503, "the accounts are being changed; repeat the request")
end

local name = lighty.r.req_env["REMOTE_USER"] or ""
if name == "" then return refuse(403, "a login is needed") end
if name == administrator then return end
local class = classOf(lighty.r.req_attr["physical.path"])
if class == "administrator" then return refuse(403, "only the administrator may do this") end
if class ~= "any" and not ("," .. privileges .. ","):find("," .. class .. ",", 1, true) then
  return refuse(403, "this needs the privilege " .. class .. " (see group_list.cgi)")
end
