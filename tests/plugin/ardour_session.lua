-- Makes a session with one track of 10 inputs, puts the plug-in on it, plays and stops, and prints what it sees.
-- SESSION: a folder that does not exist; FORMAT: the name of a plug-in type; FIRST: the index of the first command.

io.stdout:setvbuf ("no")

local first = tonumber (os.getenv ("FIRST"))
local s = create_session (os.getenv ("SESSION"), "platterdex", 48000)
local track = s:new_audio_track (10, 14, nil, 1, "Decks", ARDOUR.PresentationInfo.max_order,
                                 ARDOUR.TrackMode.Normal, true, true):front ()
-- Ardour's thread "autoconnect" reads the ports of a new track without a lock, to sum latencies; a processor that adds ports in
-- that moment ends the host, whoever made it. Nothing tells when the thread is through.
ARDOUR.LuaAPI.usleep (500000)
local processor = ARDOUR.LuaAPI.new_plugin (s, "Platterdex", ARDOUR.PluginType[os.getenv ("FORMAT")], "")
if processor:isnil () then
    print ("no plug-in")
    os.exit (1)
end
track:add_processor_by_index (processor, 0, nil, true)

local insert = processor:to_insert ()
local plugin = insert:plugin (0)
print ("name " .. plugin:name () .. ", maker " .. plugin:maker ())
print ("channels " .. insert:natural_input_streams ():n_audio () .. " " .. insert:natural_output_streams ():n_audio ())
print ("parameters " .. plugin:parameter_count ())
for _, number in ipairs ({ 1, 277, 464 }) do
    print ("parameter " .. number .. " is " .. plugin:parameter_label (first + number - 1))
end

local function write (number, value)
    ARDOUR.LuaAPI.set_processor_param (processor, first + number - 1, value)
    ARDOUR.LuaAPI.usleep (100000) -- some formats carry a value into a later block
end

local function read (number)
    return string.format ("%.2f", (ARDOUR.LuaAPI.get_processor_param (processor, first + number - 1, true)))
end

write (436, 1)

s:request_roll (ARDOUR.TransportRequestSource.TRS_UI)
for attempt = 1, 100 do
    if s:transport_sample () > 24000 then break end
    ARDOUR.LuaAPI.usleep (50000)
end
print ("played half a second: " .. tostring (s:transport_sample () > 24000))

write (37, 0.25)
print ("key tuning " .. read (37))
local seen = ""
for i = 1, 5 do
    write (41, i % 2 == 1 and 1 or 0.5) -- this host never writes what it reads already
    seen = seen .. " " .. read (41)
end
print ("key lock" .. seen)

s:request_stop (false, false, ARDOUR.TransportRequestSource.TRS_UI)
for attempt = 1, 100 do
    if s:transport_stopped () then break end
    ARDOUR.LuaAPI.usleep (50000)
end
print ("stopped: " .. tostring (s:transport_stopped ()))
s:save_state ("")
s = nil
close_session ()
print ("closed")
