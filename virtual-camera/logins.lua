-- Protects the login: a request that somebody else has seen cannot be sent again, and passwords cannot be guessed fast.
-- The web server runs this at the head of a request, after it has checked the login, and before the reply. It keeps one
-- state for a script, so that all three share what is remembered.

local common = dofile("/etc/camera/common.lua")(lighty)

local kBurst, kAccountBurst = 10, 30  -- wrong passwords; then one a second
local kLifetime = 700                 -- s, of a nonce; the web server's own limit is less, if its clock does not jump
local kManyDebts = 1000

-- Seconds since the machine was started. The clock of the day may jump, and then a used login would be forgotten.
local now = math.floor(tonumber(common.read("/proc/uptime"):match("^[%d.]+")))

local state = package.loaded["camera-logins"]
if not state then
  state = { used = {}, usedBefore = {}, since = now, debts = {}, count = 0, known = {} }
  package.loaded["camera-logins"] = state
end

local request = lighty.r.req_header
local env = lighty.r.req_env
local target = lighty.r.req_attr["request.orig-uri"]

-- Returns the text up to the closing quote, and the position after that.
local function quoted(text, position)
  local first = position
  while true do
    local at = text:find('["\\]', position)
    if not at then return end
    if text:sub(at, at) == '"' then return text:sub(first, at - 1):gsub("\\(.)", "%1"), at + 1 end
    position = at + 2
  end
end

-- Returns the fields of a digest login by their names; nothing if it is malformed.
local function fieldsOf(text)
  local position = text:match("^[Dd][Ii][Gg][Ee][Ss][Tt] +()")
  local fields = {}
  while position and position <= #text do
    local name, start = text:match("^([%w*]+) *= *()", position)
    if not name or fields[name:lower()] then return end
    local value, after
    if text:sub(start, start) == '"' then
      value, after = quoted(text, start + 1)
    else
      value, after = text:match("^([^%s,\"]+)()", start)
    end
    if not value then return end
    fields[name:lower()] = value
    position = text:match("^[ \t]*,?[ \t]*()", after)
  end
  return fields
end

-- True for a login that the web server checks without a complaint in its log.
local function isLogin(fields)
  return (fields.username or ""):find("^[%w_.-]+$") and #fields.username <= 30 and fields.realm == "camera"
    and (fields.nonce or ""):find("^[%x:]+$") and (fields.response or ""):find("^" .. ("%x"):rep(32) .. "$")
    and (fields.algorithm or "MD5") == "MD5" and not fields.userhash and not fields["username*"]
    and (not fields.qop or fields.qop == "auth" and fields.cnonce and (fields.nc or ""):find("^%x+$"))
end

-- The web server takes any nonce that has the form of its own and, by the clock of the day, is not too old. A seal shows
-- that it is its own, and when it was made.
local function hashOf(text)
  return lighty.c.hmac("sha256", os.getenv("CAMERA_SECRET"), text):sub(1, 32):lower()
end

local function seal(nonce)
  local dated = ("%s:%x"):format(nonce, now)
  return dated .. ":" .. hashOf(dated)
end

local function isFresh(nonce)
  local dated, made, hash = nonce:match("^(%x+:%x+:(%x+)):(%x+)$")
  return dated ~= nil and hash == hashOf(dated) and now - tonumber(made, 16) <= kLifetime
end

-- The debt of a key is one second for each wrong password. Stored is the time at which it is paid.
local function debtOf(key, burst)
  return math.min(math.max((state.debts[key] or now) - now, 0), burst)
end

local function addDebt(key, burst, seconds)
  if not state.debts[key] then state.count = state.count + 1 end
  state.debts[key] = now + math.max(debtOf(key, burst) + seconds, 0)
end

local function forgetPaidDebts()
  if state.count < kManyDebts then return end
  state.count = 0
  for key, debt in pairs(state.debts) do
    if debt <= now then state.debts[key] = nil else state.count = state.count + 1 end
  end
end

local function remember(response)
  if now - state.since > kLifetime then
    state.usedBefore, state.used, state.since = state.used, {}, now
  end
  state.used[response] = true
end

local address = lighty.r.req_attr["request.remote-addr"]
local name = env["LOGIN_NAME"] or ""
local pair = address .. " " .. name

local function owe(seconds)
  addDebt(pair, kBurst, seconds)
  addDebt(name, kAccountBurst, seconds)
end

-- Before the reply. A stale login says that its nonce is too old, so that the client repeats the request with a new one
-- and does not ask for the password.
if lighty.r.req_item.http_status ~= 0 then
  lighty.r.resp_header["Authentication-Info"] = ""  -- it may hold a nonce without seal
  if lighty.r.req_item.http_status ~= 401 then return end
  local challenge = (lighty.r.resp_header["WWW-Authenticate"] or ""):gsub('nonce="([%x:]+)"', function(nonce)
    return 'nonce="' .. seal(nonce) .. '"'
  end)
  local isStale = challenge:find("stale=true")
  if env["LOGIN_STALE"] == "1" and not isStale then challenge = challenge .. ", stale=true" end
  lighty.r.resp_header["WWW-Authenticate"] = challenge
  if isStale and name ~= "" and env["LOGIN_STALE"] ~= "1" then owe(-1) end
  return
end

-- After the login was checked.
if (env["REMOTE_USER"] or "") ~= "" then
  remember(env["LOGIN_RESPONSE"])
  state.known[pair] = true
  owe(-1)
  return
end

-- At the head.
local authorization = request["Authorization"] or ""
if authorization == "" then return end
local fields = fieldsOf(authorization)
if not fields or not isLogin(fields) then
  request["Authorization"] = ""
  return
end
if fields.uri ~= target then return common.refuse(400, "Authorization: a digest login for this address") end
name = fields.username
env["LOGIN_NAME"], env["LOGIN_RESPONSE"] = name, fields.response:lower()
if not isFresh(fields.nonce) or state.used[fields.response:lower()] or state.usedBefore[fields.response:lower()] then
  env["LOGIN_STALE"] = "1"
  request["Authorization"] = ""
  return
end
pair = address .. " " .. name
if debtOf(pair, kBurst) >= kBurst or not state.known[pair] and debtOf(name, kAccountBurst) >= kAccountBurst then
  lighty.r.resp_header["Retry-After"] = "1"
  return common.refuse(429, "too many wrong passwords; wait a second")
end
forgetPaidDebts()
owe(1)  -- until the login turns out to be right, which is known at once or, if it is wrong, up to a second later
