#include "analysis/files/AnalysisBinary.h"
#include "analysis/files/AnalysisXml.h"

#include <gtest/gtest.h>
#include <juce_core/juce_core.h>

#include <bit>
#include <cmath>
#include <limits>

namespace
{
std::optional<TrackAnalysis> readXml (const std::string& text)
{
    return AnalysisXml::read (std::as_bytes (std::span (text)));
}

TrackAnalysis example()
{
    TrackAnalysis analysis;
    analysis.tempoTracker = 127.99;
    analysis.tempoAverage = 128.0;
    analysis.beatMarks = { { 1200, 127.98999786376953 }, { 11537, 128.0 } };
    analysis.downbeatId = 1;
    analysis.downbeatPos = 11537;
    analysis.gridMode = 1;
    analysis.autogain = 0.7079457843841379;
    auto& cues = analysis.cues.emplace();
    cues.cuePos[0] = 0.0;
    cues.cuePos[15] = 31751999.25;
    cues.phaseStart = 512.5;
    cues.transportCueSel = 15;
    cues.transportStart = 1;
    return analysis;
}

/** A document around the values of a grid and of a list of cues. */
std::string document (const std::string& tempo, const std::string& grid, const std::string& cues = {})
{
    return "<audioAnalysis><bpm>" + tempo + "</bpm><beatgrid>" + grid + "</beatgrid><cues><cue_list>" + cues
           + "</cue_list></cues></audioAnalysis>";
}

const std::string twoMarks =
    "<value id=\"0\" pos=\"10\" bpm=\"120\"/><value id=\"1\" pos=\"20\" bpm=\"121\"/>";

/** The older form, field by field. */
struct OldForm
{
    std::string bytes;

    template <typename Field>
    OldForm& add (Field field)
    {
        const auto raw = std::bit_cast<std::array<char, sizeof (Field)>> (field);
        bytes.append (raw.data(), raw.size());
        return *this;
    }

    static OldForm make (int32_t magic, int32_t count, int32_t present)
    {
        OldForm form;
        form.add (magic).add (99.5).add (100.0).add (count).add<int32_t> (1).add<int32_t> (4000).add<int8_t> (
            1);
        for (int32_t i = 0; i < present; ++i)
            form.add<int32_t> (1000 + 3000 * i).add<int32_t> (-7).add (99.0 + i);
        for (const auto cue : { 5.0, -1.0, std::nan (""), 7.5 })
            form.add (cue);
        form.add (640.0).add<int8_t> (3).add<int8_t> (1).add (1.25);
        return form;
    }

    std::optional<TrackAnalysis> read() const
    {
        return AnalysisBinary::read (std::as_bytes (std::span (bytes)));
    }
};
}

TEST (AnalysisForms, TheXmlIsWrittenToTheLetter)
{
    std::string expected = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n\n"
                           "<audioAnalysis version=\"2000\">\n"
                           "  <bpm>\n"
                           "    <value tempo_tracker=\"127.99\"/>\n"
                           "    <value tempo_average=\"128.0\"/>\n"
                           "    <value num_beats=\"2\"/>\n"
                           "    <value downbeat_id=\"1\"/>\n"
                           "    <value downbeat_pos=\"11537\"/>\n"
                           "    <value grid_mode=\"1\"/>\n"
                           "  </bpm>\n"
                           "  <beatgrid>\n"
                           "    <value id=\"0\" pos=\"1200\" bpm=\"127.98999786376953\"/>\n"
                           "    <value id=\"1\" pos=\"11537\" bpm=\"128\"/>\n"
                           "  </beatgrid>\n"
                           "  <cues>\n"
                           "    <cue_list>\n"
                           "      <value id=\"0\" pos=\"0\" name=\"\"/>\n";
    for (int i = 1; i < 15; ++i)
        expected += "      <value id=\"" + std::to_string (i) + "\" pos=\"-1\" name=\"\"/>\n";
    expected += "      <value id=\"15\" pos=\"31751999.25\" name=\"\"/>\n"
                "    </cue_list>\n"
                "    <value phase_sta=\"512.5\"/>\n"
                "    <value transport_cue_sel=\"15\"/>\n"
                "    <value transport_sta=\"1\"/>\n"
                "  </cues>\n"
                "  <agg>\n"
                "    <value autogain=\"0.7079457843841379\"/>\n"
                "  </agg>\n"
                "</audioAnalysis>\n";
    EXPECT_EQ (juce::String (AnalysisXml::write (example())).replace ("\r\n", "\n"), juce::String (expected));
}

TEST (AnalysisForms, WhatIsWrittenReadsBackTheSame)
{
    TrackAnalysis withoutBeats, untouched, inExactNumbers = example();
    withoutBeats.beatMarks.emplace();
    untouched.beatMarks = { { 0, 30.0 } };
    untouched.gridMode = 0;
    untouched.cues.emplace().transportCueSel = 0;
    untouched.cues->transportStart = 0;
    inExactNumbers.tempoTracker = inExactNumbers.tempoAverage = std::nextafter (400.0 / 3.0, 0.0);
    inExactNumbers.cues->cuePos[3] = std::nextafter (1e7 / 3.0, 0.0);
    inExactNumbers.autogain = 1.0 / 3.0;
    withoutBeats.gridMode = 0;
    auto sure = example();
    sure.untouched = { 127.0, 11537 };
    sure.confidence = 83;
    EXPECT_EQ (confidenceOf (sure), 100) << "moved by hand";
    sure.gridMode = 0;
    sure.tempoTracker = 127.0;
    EXPECT_EQ (confidenceOf (sure), 83);
    for (const auto& value : { example(), withoutBeats, untouched, inExactNumbers, sure })
        EXPECT_EQ (readXml (AnalysisXml::write (value)), std::optional (value));

    // Without a grid the track is still to be analysed.
    auto gridless = example();
    gridless.beatMarks.reset();
    const auto text = AnalysisXml::write (gridless);
    EXPECT_EQ (text.find ("beatgrid"), std::string::npos);
    const auto back = readXml (text);
    ASSERT_TRUE (back);
    EXPECT_FALSE (back->beatMarks);
    EXPECT_EQ (back->cues, gridless.cues);

    // A batch writes no cues.
    auto ofBatch = example();
    ofBatch.cues.reset();
    EXPECT_EQ (AnalysisXml::write (ofBatch).find ("cue"), std::string::npos);
}

TEST (AnalysisForms, WhatIsNoAnalysisIsRefused)
{
    for (const char* text :
         { "", "text", "<audioAnalysis>", "<audioAnalysis/>", "<other><bpm/></other>",
           "<audioAnalysis><agg/></audioAnalysis>", "<audioAnalysis><agg><bpm/></agg></audioAnalysis>",
           "<audioAnalysis><bpm></audioAnalysis>" })
        EXPECT_FALSE (readXml (text)) << text;
}

TEST (AnalysisForms, DamagedValuesLeaveWhatIsUsable)
{
    struct Case
    {
        std::string count, grid;
        int marks; ///< -1: no grid
    };
    const auto mark = [] (int id, int64_t pos) {
        return "<value id=\"" + std::to_string (id) + "\" pos=\"" + std::to_string (pos) + "\" bpm=\"120\"/>";
    };
    for (const auto& [count, grid, marks] :
         { Case { "2", twoMarks, 2 }, Case { "1", twoMarks, 1 }, Case { "0", twoMarks, -1 },
           Case { "0", "", 0 }, Case { "7", "", -1 }, Case { "2147483647", twoMarks, 2 },
           Case { "99999999999999999999", twoMarks, -1 }, Case { "-3", twoMarks, -1 },
           Case { "5", twoMarks + mark (3, 50), 2 },                 // one is missing
           Case { "5", twoMarks + mark (1, 25), 2 },                 // twice: the last counts
           Case { "5", mark (1, 20) + mark (0, 10), 2 },             // in any order
           Case { "5", twoMarks + mark (2, 15), 2 },                 // does not ascend
           Case { "5", twoMarks + mark (-1, 15) + mark (9, 90), 2 }, // none of ours
           Case { "2", mark (0, -5) + mark (1, 20), -1 },
           Case { "2", "<value/><other id=\"0\"/>" + twoMarks, 2 } })
    {
        const auto read = readXml (document ("<value num_beats=\"" + count + "\"/>", grid));
        ASSERT_TRUE (read) << grid;
        EXPECT_EQ (read->beatMarks ? static_cast<int> (read->beatMarks->size()) : -1, marks)
            << count << " " << grid;
        if (marks > 1)
        {
            EXPECT_LT ((*read->beatMarks)[0].pos, (*read->beatMarks)[1].pos);
        }
    }

    for (const char* bad : { "nan", "inf", "-inf", "1e300", "-5", "0", "x", "" })
    {
        const auto tempo = "<value tempo_tracker=\"" + std::string (bad) + "\"/><value num_beats=\"1\"/>"
                           + "<value downbeat_id=\"9\"/><value downbeat_pos=\"-4\"/>";
        auto text =
            document (tempo, "<value id=\"0\" pos=\"3\" bpm=\"" + std::string (bad) + "\"/>",
                      "<value id=\"0\" pos=\"" + std::string (bad)
                          + "\"/><value id=\"16\" pos=\"5\"/>"
                            "<value id=\"-1\" pos=\"5\"/><value pos=\"5\"/><value id=\"1\" pos=\"5\"/>");
        text.insert (text.find ("</audioAnalysis>"),
                     "<agg><value autogain=\"" + std::string (bad) + "\"/></agg>");
        const auto read = readXml (text);
        ASSERT_TRUE (read) << bad;
        EXPECT_EQ (read->tempoTracker, 120.0) << bad;
        EXPECT_EQ (read->beatMarks->front().bpm, 120.0) << bad;
        EXPECT_EQ (read->downbeatId, 0);
        EXPECT_EQ (read->downbeatPos, 0);
        EXPECT_FALSE (read->autogain) << bad;
        auto cues = TrackAnalysis::Cues().cuePos;
        cues[1] = 5.0;
        if (std::string (bad) == "0")
            cues[0] = 0.0;
        EXPECT_EQ (read->cues->cuePos, cues) << bad;
    }
}

TEST (AnalysisForms, TheOlderFormIsRead)
{
    const auto form = OldForm::make (AnalysisBinary::magic, 2, 2);
    EXPECT_EQ (form.bytes.size(), 33u + 2 * 16 + 50);
    const auto read = form.read();
    ASSERT_TRUE (read);
    EXPECT_EQ (read->tempoTracker, 99.5);
    EXPECT_EQ (read->tempoAverage, 100.0);
    EXPECT_EQ (read->beatMarks, (std::vector<BeatMark> { { 1000, 99.0 }, { 4000, 100.0 } }));
    EXPECT_EQ (read->downbeatId, 1);
    EXPECT_EQ (read->downbeatPos, 4000);
    EXPECT_EQ (read->gridMode, 1);
    EXPECT_EQ (read->autogain, 1.25);
    ASSERT_TRUE (read->cues);
    auto cues = TrackAnalysis::Cues().cuePos;
    cues[0] = 5.0;
    cues[3] = 7.5;
    EXPECT_EQ (read->cues->cuePos, cues);
    EXPECT_EQ (read->cues->phaseStart, 640.0);
    EXPECT_EQ (read->cues->transportCueSel, 3);
    EXPECT_EQ (read->cues->transportStart, 1);

    EXPECT_FALSE (OldForm::make (1406, 2, 2).read());
    for (const auto count : { 3, -1, INT32_MAX, INT32_MIN })
        EXPECT_FALSE (OldForm::make (AnalysisBinary::magic, count, 2).read()) << count;
    auto shorter = form;
    while (!shorter.bytes.empty())
    {
        shorter.bytes.pop_back();
        ASSERT_FALSE (shorter.read()) << shorter.bytes.size();
    }
}
