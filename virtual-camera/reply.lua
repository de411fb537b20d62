-- Lets pages of the origins that --allow-origin names read every reply, also a refusal.

local origins = os.getenv("CAMERA_ORIGINS") or ""
if origins == "" then return end
lighty.r.resp_header["Vary"] = "Origin"
local origin = lighty.r.req_header["Origin"]
if origin and origin:find("^%S+$") and (" " .. origins .. " "):find(" " .. origin:lower() .. " ", 1, true) then
  lighty.r.resp_header["Access-Control-Allow-Origin"] = origin
  lighty.r.resp_header["Access-Control-Allow-Credentials"] = "true"
end
