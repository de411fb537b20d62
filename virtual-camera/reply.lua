-- Lets pages of the origins that --allow-origin names read every reply, also a refusal.

if (os.getenv("CAMERA_ORIGINS") or "") == "" then return end
lighty.r.resp_header["Vary"] = "Origin"
local origin = lighty.r.req_header["Origin"]
if dofile("/etc/camera/common.lua")(lighty).isAllowed(origin) then
  lighty.r.resp_header["Access-Control-Allow-Origin"] = origin
  lighty.r.resp_header["Access-Control-Allow-Credentials"] = "true"
end
