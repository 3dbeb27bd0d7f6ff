#include "plugin/PluginFilter.h"
#include "plugin/Vst2Instance.h"
#include "plugin/Vst2Parameters.h"

/** JUCE's entry, under the name that its target is compiled with. */
extern "C" Vst2::AEffect* wrappedVstPluginMain (Vst2::audioMasterCallback);

namespace
{
/** Makes an effect record through JUCE's wrapper and puts our parameter calls into it.
    @returns null if the host is none, if no engine could be made or if there are too many. */
Vst2::AEffect* createEffect (Vst2::audioMasterCallback host)
{
    if (host == nullptr)
        return nullptr;

    const Vst2Parameters::HostScope scope (host);
    takeNewestEngine();
    auto* effect = wrappedVstPluginMain (Vst2Parameters::callHost);
    auto* engine = takeNewestEngine();
    if (effect == nullptr)
        return nullptr;

    if (engine == nullptr || !Vst2Instance::add (effect, { engine, effect->dispatcher, host }))
    {
        effect->dispatcher (effect, Vst2::effClose, 0, 0, nullptr, 0.0f);
        return nullptr;
    }
    effect->dispatcher = Vst2Parameters::dispatch;
    effect->setParameter = Vst2Parameters::set;
    effect->getParameter = Vst2Parameters::get;
    return effect;
}
}

#define PX_EXPORT extern "C" __attribute__ ((visibility ("default")))

PX_EXPORT Vst2::AEffect* VSTPluginMain (Vst2::audioMasterCallback host)
{
    return createEffect (host);
}

/** Old hosts look for this name only. A function called main is the language's own, hence the label. */
PX_EXPORT Vst2::AEffect* olderPluginMain (Vst2::audioMasterCallback) asm("main");
PX_EXPORT Vst2::AEffect* olderPluginMain (Vst2::audioMasterCallback host)
{
    return createEffect (host);
}
