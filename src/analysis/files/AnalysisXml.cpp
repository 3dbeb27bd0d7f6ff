#include "analysis/files/AnalysisXml.h"

#include "support/xml/XmlPullParser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace
{
/** Attributes of the element "bpm". Other programs that read the file pass them over. */
constexpr const char *untouchedTempo = "untouched_tempo", *untouchedDownbeat = "untouched_downbeat",
                     *gridConfidence = "confidence";

/** The shortest text that reads back as the same number. */
juce::String numberText (double value)
{
    std::array<char, 32> text;
    const auto end = std::to_chars (text.data(), text.data() + text.size(), value).ptr;
    return juce::String (text.data(), static_cast<size_t> (end - text.data()));
}

/** The same, marked as a number that may have a fraction. */
juce::String fractionText (double value)
{
    const auto text = numberText (value);
    return text.containsAnyOf (".e") ? text : text + ".0";
}

void addValue (juce::XmlElement& parent, const char* key, const juce::String& text)
{
    parent.createNewChildElement ("value")->setAttribute (key, text);
}

void addGrid (juce::XmlElement& parent, const std::vector<BeatMark>& marks)
{
    // From the back: JUCE looks for the end of the list whenever something is appended.
    for (auto i = static_cast<int> (marks.size()); --i >= 0;)
    {
        const auto& mark = marks[static_cast<size_t> (i)];
        auto* value = new juce::XmlElement ("value");
        value->setAttribute ("id", i);
        value->setAttribute ("pos", mark.pos);
        value->setAttribute ("bpm", numberText (mark.bpm));
        parent.prependChildElement (value);
    }
}

void addCues (juce::XmlElement& parent, const TrackAnalysis::Cues& cues)
{
    auto* list = parent.createNewChildElement ("cue_list");
    for (size_t i = 0; i < cues.cuePos.size(); ++i)
    {
        auto* value = list->createNewChildElement ("value");
        value->setAttribute ("id", static_cast<int> (i));
        value->setAttribute ("pos", numberText (cues.cuePos[i]));
        value->setAttribute ("name", "");
    }
    addValue (parent, "phase_sta", numberText (cues.phaseStart));
    addValue (parent, "transport_cue_sel", juce::String (cues.transportCueSel.value_or (0)));
    addValue (parent, "transport_sta", juce::String (cues.transportStart.value_or (0)));
}

/** A number at the start of a text; nothing if there is none or it does not fit. */
template <typename Number>
std::optional<Number> numberIn (std::string_view text)
{
    text.remove_prefix (std::min (text.find_first_not_of (" \t\r\n"), text.size()));
    Number number {};
    const auto [end, error] = std::from_chars (text.data(), text.data() + text.size(), number);
    return error == std::errc {} ? std::optional (number) : std::nullopt;
}

class Reader
{
public:
    explicit Reader (std::span<const std::byte> bytes)
        : parser (std::make_unique<juce::MemoryInputStream> (bytes.data(), bytes.size(), false))
    {
    }

    std::optional<TrackAnalysis> read()
    {
        for (;;)
            switch (parser.next())
            {
            case XmlPullParser::Event::start:
                if (!enter())
                    return std::nullopt;
                break;
            case XmlPullParser::Event::end:
                if (static_cast<size_t> (parser.depth()) < holders.size())
                    holders.pop_back();
                break;
            case XmlPullParser::Event::text:
                break;
            case XmlPullParser::Event::finished:
                return hasTempo ? std::optional (finish()) : std::nullopt;
            case XmlPullParser::Event::failed:
                return std::nullopt;
            }
    }

private:
    enum class Holder
    {
        other,
        tempo,
        grid,
        cues,
        cueList,
        gain
    };

    static Holder holderOf (std::string_view name)
    {
        constexpr std::pair<std::string_view, Holder> names[] { { "bpm", Holder::tempo },
                                                                { "beatgrid", Holder::grid },
                                                                { "cues", Holder::cues },
                                                                { "cue_list", Holder::cueList },
                                                                { "agg", Holder::gain } };
        for (const auto& [word, holder] : names)
            if (word == name)
                return holder;
        return Holder::other;
    }

    /** @returns false if the document is of another kind */
    bool enter()
    {
        constexpr size_t deepest = 8; // what lies below is nobody's
        if (parser.depth() == 1 && parser.name() != "audioAnalysis")
            return false;
        if (holders.size() >= deepest)
            return true;
        if (parser.name() == "value" && !holders.empty())
            takeValue (holders.back());
        const auto holder = holderOf (parser.name());
        if (holder == Holder::tempo && parser.depth() == 2)
        {
            hasTempo = true;
            takeUntouched();
            take<int32_t> (gridConfidence, value.confidence);
        }
        if (holder == Holder::grid && !value.beatMarks)
            value.beatMarks.emplace();
        if (holder == Holder::cues && !value.cues)
            value.cues.emplace();
        holders.push_back (holder);
        return true;
    }

    template <typename Number, typename Target>
    void take (const char* key, Target& target)
    {
        if (const auto* text = parser.attribute (key))
            if (const auto number = numberIn<Number> (*text))
                target = *number;
    }

    void takeByte (const char* key, std::optional<int8_t>& target)
    {
        std::optional<int32_t> number;
        take<int32_t> (key, number);
        if (number)
            target = static_cast<int8_t> (std::clamp (*number, -1, 127));
    }

    void takeValue (Holder holder)
    {
        switch (holder)
        {
        case Holder::tempo:
            take<double> ("tempo_tracker", value.tempoTracker);
            take<double> ("tempo_average", value.tempoAverage);
            take<int32_t> ("num_beats", markCount);
            take<int32_t> ("downbeat_id", value.downbeatId);
            take<int32_t> ("downbeat_pos", value.downbeatPos);
            take<int32_t> ("grid_mode", value.gridMode);
            break;
        case Holder::grid:
            takeMark();
            break;
        case Holder::cueList:
            takeCue();
            break;
        case Holder::cues:
            take<double> ("phase_sta", value.cues->phaseStart);
            takeByte ("transport_cue_sel", value.cues->transportCueSel);
            takeByte ("transport_sta", value.cues->transportStart);
            break;
        case Holder::gain:
            take<double> ("autogain", value.autogain);
            break;
        case Holder::other:
            break;
        }
    }

    void takeUntouched()
    {
        std::optional<double> tempo;
        std::optional<int32_t> downbeat;
        take<double> (untouchedTempo, tempo);
        take<int32_t> (untouchedDownbeat, downbeat);
        if (!tempo || !downbeat)
            return;
        value.untouched = { *tempo, *downbeat };
    }

    void takeMark()
    {
        IndexedMark mark;
        take<int32_t> ("id", mark.id);
        take<int32_t> ("pos", mark.mark.pos);
        take<double> ("bpm", mark.mark.bpm);
        marks.push_back (mark);
    }

    void takeCue()
    {
        int32_t id = -1;
        auto position = TrackAnalysis::unsetCue;
        take<int32_t> ("id", id);
        take<double> ("pos", position);
        if (value.cues && id >= 0 && static_cast<size_t> (id) < value.cues->cuePos.size())
            value.cues->cuePos[static_cast<size_t> (id)] = position;
    }

    TrackAnalysis finish()
    {
        std::stable_sort (marks.begin(), marks.end(),
                          [] (const IndexedMark& a, const IndexedMark& b) { return a.id < b.id; });
        int32_t next = 0;
        for (size_t i = 0; i < marks.size() && value.beatMarks; ++i)
        {
            if (marks[i].id < 0 || (i + 1 < marks.size() && marks[i + 1].id == marks[i].id))
                continue;
            if (marks[i].id != next || next >= markCount)
                break;
            value.beatMarks->push_back (marks[i].mark);
            ++next;
        }
        if (next == 0 && (markCount > 0 || !marks.empty()))
            value.beatMarks.reset();
        repair (value);
        return std::move (value);
    }

    struct IndexedMark
    {
        int32_t id = -1;
        BeatMark mark;
    };

    XmlPullParser parser;
    std::vector<Holder> holders;
    std::vector<IndexedMark> marks;
    int32_t markCount = 0;
    bool hasTempo = false;
    TrackAnalysis value;
};
}

std::string AnalysisXml::write (const TrackAnalysis& analysis)
{
    juce::XmlElement root ("audioAnalysis");
    root.setAttribute ("version", version);
    auto& tempo = *root.createNewChildElement ("bpm");
    addValue (tempo, "tempo_tracker", fractionText (analysis.tempoTracker));
    addValue (tempo, "tempo_average", fractionText (analysis.tempoAverage));
    addValue (tempo, "num_beats", juce::String (analysis.beatMarks ? analysis.beatMarks->size() : 0));
    addValue (tempo, "downbeat_id", juce::String (analysis.downbeatId));
    addValue (tempo, "downbeat_pos", juce::String (analysis.downbeatPos));
    addValue (tempo, "grid_mode", juce::String (analysis.gridMode.value_or (0)));
    if (analysis.untouched)
    {
        tempo.setAttribute (untouchedTempo, fractionText (analysis.untouched->tempo));
        tempo.setAttribute (untouchedDownbeat, analysis.untouched->downbeatPos);
    }
    if (analysis.confidence >= 0)
        tempo.setAttribute (gridConfidence, analysis.confidence);
    if (analysis.beatMarks)
        addGrid (*root.createNewChildElement ("beatgrid"), *analysis.beatMarks);
    if (analysis.cues)
        addCues (*root.createNewChildElement ("cues"), *analysis.cues);
    auto& gain = *root.createNewChildElement ("agg");
    if (analysis.autogain)
        addValue (gain, "autogain", numberText (*analysis.autogain));
    return root.toString().toStdString();
}

std::optional<TrackAnalysis> AnalysisXml::read (std::span<const std::byte> bytes)
{
    return Reader (bytes).read();
}
