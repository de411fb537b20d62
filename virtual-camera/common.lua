-- What several of the web server's scripts need. The web server gives "lighty" only to the scripts that it starts.

return function(lighty)
  local common = {}

  -- Answers the request with a refusal. Returns the status.
  function common.refuse(status, message)
    lighty.r.resp_header["Content-Type"] = "text/plain; charset=utf-8"
    lighty.r.resp_body.set("error=" .. status .. "\nmessage=" .. message .. "\n")
    return status
  end

  -- Returns the text of a file; empty if it cannot be read.
  function common.read(path)
    local file = io.open(path)
    local text = file and file:read("*a")
    if file then file:close() end
    return text or ""
  end

  -- True if pages of this origin (SCHEME://HOST[:PORT]) were allowed by --allow-origin.
  function common.isAllowed(origin)
    local allowed = " " .. (os.getenv("CAMERA_ORIGINS") or "") .. " "
    return origin ~= nil and origin:find("^%S+$") ~= nil and allowed:find(" " .. origin:lower() .. " ", 1, true) ~= nil
  end

  return common
end
