// A small VST 2 plug-in that does what the name of its file says: some of them behave, most don't.

namespace Vst2
{
#include <pluginterfaces/vst2.x/aeffect.h>
#include <pluginterfaces/vst2.x/aeffectx.h>
}

#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <dlfcn.h>
#include <unistd.h>

namespace
{
using namespace Vst2;

/** The name of this library's file without its ending. */
std::string nameOfThisFile()
{
    Dl_info info {};
    ::dladdr (reinterpret_cast<void*> (&nameOfThisFile), &info);
    std::string name (info.dli_fname != nullptr ? info.dli_fname : "");
    name.erase (0, name.rfind ('/') + 1);
    return name.substr (0, name.find ('.'));
}

const std::string behaviour = nameOfThisFile();

bool is (std::string_view name)
{
    return behaviour == name;
}

constexpr int delayFrames = 100, manyChannels = 40, parameters = 2, programs = 3;

struct Plugin
{
    AEffect record {};
    std::array<std::atomic<float>, parameters> values { 0.5f, 0.5f };
    std::array<std::array<float, delayFrames>, 2> line {};
    int place = 0, blocks = 0;
    std::vector<char> state;
    int program = 0;
    std::array<std::array<float, parameters>, programs> kept {
        { { 0.5f, 0.1f }, { 0.25f, 0.2f }, { 0.75f, 0.3f } }
    };
    std::atomic<bool> clicks { false }; ///< for a block after its program has changed
};

Plugin& of (AEffect* effect)
{
    return *static_cast<Plugin*> (effect->object);
}

void hang (int seconds)
{
    std::this_thread::sleep_for (std::chrono::seconds (seconds));
}

float processed (Plugin& plugin, size_t channel, float in)
{
    if (is ("nan"))
        return plugin.blocks > 20 ? std::numeric_limits<float>::quiet_NaN() : in;
    if (is ("loud"))
        return plugin.blocks > 20 ? in * 1e6f + 1e5f : in;
    if (is ("denormal"))
        return 1e-40f;
    if (is ("delay"))
        return std::exchange (plugin.line[channel][static_cast<size_t> (plugin.place)], in);
    return in * 2.0f * plugin.values[0] + (plugin.clicks ? 0.5f : 0.0f); // 0.5 is unity
}

void process (AEffect* effect, float** in, float** out, int frames)
{
    auto& plugin = of (effect);
    ++plugin.blocks;
    if (is ("crash_process"))
        std::abort();
    for (int i = 0; i < frames; ++i)
    {
        for (int c = 0; c < effect->numOutputs; ++c)
            out[c][i] = c < effect->numInputs   ? processed (plugin, static_cast<size_t> (c) % 2, in[c][i])
                        : effect->numInputs > 0 ? in[0][i]
                                                : 0.25f;
        plugin.place = (plugin.place + 1) % delayFrames;
    }
    plugin.clicks = false;
}

void changeProgram (Plugin& plugin, int next)
{
    for (size_t i = 0; i < parameters; ++i)
    {
        plugin.kept[static_cast<size_t> (plugin.program)][i] = plugin.values[i];
        plugin.values[i] = plugin.kept[static_cast<size_t> (next)][i];
    }
    plugin.program = next;
    plugin.clicks = plugin.blocks > 0;
}

void say (void* target, const char* text)
{
    std::strcpy (static_cast<char*> (target), text);
}

t_fstPtrInt dispatch (AEffect* effect, int opcode, int index, t_fstPtrInt value, void* const data, float)
{
    auto& plugin = of (effect);
    switch (opcode)
    {
    case effClose:
        if (is ("crash_exit"))
            std::abort();
        delete &plugin;
        return 0;
    case effGetParamName:
        say (data, index == 0 ? "Gain" : "Other");
        return 0;
    case effGetParamDisplay:
        say (data,
             std::to_string (static_cast<int> (100.0f * plugin.values[static_cast<size_t> (index)])).c_str());
        return 0;
    case effCanBeAutomated:
        return 1;
    case effGetEffectName:
        say (data, behaviour.c_str());
        return 1;
    case effGetVendorString:
        say (data, "Tests & \"Sons\"");
        return 1;
    case effGetPlugCategory:
        return kPlugCategEffect;
    case effSetProgram:
        if (is ("programs"))
            changeProgram (plugin, static_cast<int> (value));
        return 0;
    case effGetProgram:
        return plugin.program;
    case effGetProgramName:
        say (data, ("Sound " + std::to_string (plugin.program)).c_str());
        return 0;
    case effGetVstVersion:
        return kVstVersion;
    case effGetChunk:
    {
        const std::array<float, parameters> now { plugin.values[0], plugin.values[1] };
        plugin.state.resize (is ("huge_state") ? 8'000'000 : sizeof now);
        std::memcpy (plugin.state.data(), now.data(), sizeof now);
        *static_cast<void**> (data) = plugin.state.data();
        return static_cast<t_fstPtrInt> (plugin.state.size());
    }
    case effSetChunk:
        if (std::array<float, parameters> kept; value >= static_cast<t_fstPtrInt> (sizeof kept))
        {
            std::memcpy (kept.data(), data, sizeof kept);
            plugin.values[0] = kept[0];
            plugin.values[1] = kept[1];
        }
        return 1;
    default:
        return 0;
    }
}
}

extern "C" __attribute__ ((visibility ("default"))) AEffect* VSTPluginMain (audioMasterCallback)
{
    if (is ("crash_scan"))
        std::abort();
    if (is ("crash_thread"))
        std::thread ([] { std::abort(); }).join();
    if (is ("quiet_exit"))
        ::_exit (0);
    if (is ("child_left"))
        if (::fork() == 0)
            hang (600);
    if (is ("hang_20"))
        hang (20);
    if (is ("hang_200"))
        hang (200);
    if (is ("popups"))
        for (int i = 0; i < 30; ++i)
        {
            hang (1);
            if (std::getenv ("DISPLAY") == nullptr)
                break; // nowhere to show them
        }
    if (is ("nothing"))
        return nullptr;

    auto* plugin = new Plugin;
    auto& record = plugin->record;
    record.magic = kEffectMagic;
    record.object = plugin;
    record.dispatcher = dispatch;
    record.setParameter = [] (AEffect* e, int i, float v) { of (e).values[static_cast<size_t> (i)] = v; };
    record.getParameter = [] (AEffect* e, int i) { return of (e).values[static_cast<size_t> (i)].load(); };
    record.process = record.processReplacing = process;
    record.numParams = parameters;
    record.numInputs = is ("mono") ? 1 : is ("no_input") ? 0 : is ("many") ? manyChannels : 2;
    record.numOutputs = is ("mono")             ? 1
                        : is ("no_output")      ? 0
                        : is ("many")           ? manyChannels
                        : is ("one_in_six_out") ? 6
                                                : 2;
    record.numPrograms = is ("programs") ? programs : 0;
    record.flags = effFlagsCanReplacing | (is ("programs") ? 0 : effFlagsProgramChunks);
    record.initialDelay = is ("delay") ? delayFrames : 0;
    uint32_t hash = 0; // goes round, as a hash does
    for (const auto c : behaviour)
        hash = hash * 31 + static_cast<unsigned char> (c);
    record.uniqueID = static_cast<int32_t> (hash);
    record.version = 1;
    return &record;
}
