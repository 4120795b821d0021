-- Checks a user's certificate beyond what the TLS library has checked (chain, dates, lists of revoked certificates, and
-- that the extended key usage, if there is one, names client authentication).
--
-- The converter "fitness" takes the certificate in DER, as hexadecimal digits, and returns a word:
--   fit         it has an extended key usage and exactly one common name
--   purpose     it has no extended key usage, so it was not issued for client authentication
--   names       it has no common name, or several
--   unreadable  the bytes are not a certificate
-- server/remote/session admits a user only with the first one.

local SEQUENCE, EXTENSIONS = 0x30, 0xA3
local COMMON_NAME, EXTENDED_KEY_USAGE = "\x55\x04\x03", "\x55\x1d\x25"

-- Returns an element's tag, where its content begins, and where the next element begins.
local function element(der, at)
    local tag, length = der:byte(at, at + 1)
    at = at + 2
    if length >= 0x80 then
        local count = length - 0x80
        assert(count <= 4) -- eight bytes could be a negative number and cause an endless loop
        length = string.unpack(">I" .. count, der, at)
        at = at + count
    end
    assert(at + length - 1 <= #der)
    return tag, at, at + length
end

-- Calls a function with tag, beginning, and end of each element between two positions.
local function each(der, from, to, what)
    while from < to do
        local tag, content, next = element(der, from)
        what(tag, content, next)
        from = next
    end
end

-- Returns the object identifier at the beginning of a sequence.
local function identifier(der, sequence)
    local _, content, next = element(der, sequence)
    return der:sub(content, next - 1)
end

local function fitness(der)
    local names, has_usage, sequences = 0, false, 0
    local _, certificate = element(der, 1)
    local _, from, to = element(der, certificate)
    each(der, from, to, function(tag, content, next)
        if tag == SEQUENCE then
            -- signature algorithm, issuer, validity, subject, public key
            sequences = sequences + 1
            if sequences ~= 4 then return end
            each(der, content, next, function(_, set, set_end)
                each(der, set, set_end, function(_, pair)
                    if identifier(der, pair) == COMMON_NAME then names = names + 1 end
                end)
            end)
        elseif tag == EXTENSIONS then
            local _, list, list_end = element(der, content)
            each(der, list, list_end, function(_, extension)
                has_usage = has_usage or identifier(der, extension) == EXTENDED_KEY_USAGE
            end)
        end
    end)
    return not has_usage and "purpose" or names ~= 1 and "names" or "fit"
end

core.register_converters("fitness", function(digits)
    local der = digits:gsub("..", function(pair) return string.char(tonumber(pair, 16)) end)
    local ok, word = pcall(fitness, der)
    return ok and word or "unreadable"
end)
