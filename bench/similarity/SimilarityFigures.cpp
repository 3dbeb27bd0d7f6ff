// Cost and quality of the similarity library; docs/similarity.md says how to read the figures.
//
//   bench_similarity cost FILE.wav ...       times real time that describing a track takes
//   bench_similarity store TRACKS [LIST]     made-up tracks: storing, size, start-up, questions; with a list as below they
//                                            lie around its tracks, else anywhere
//   bench_similarity judge LIST              quality on the tracks of a list; figures.py makes it:
//                                            "track GROUP FILE.wav", "copy KIND ORIGINAL.wav FILE.wav" and
//                                            "key NUMBER FILE.wav", with tabs between

#include "similarity/extract/SoundExtractor.h"
#include "similarity/store/SessionStore.h"
#include "support/music/HarmonicFit.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace
{
/** Seconds of processor time, so that other work on the machine counts little. */
double now()
{
    return static_cast<double> (std::clock()) / CLOCKS_PER_SEC;
}

struct Wav
{
    double rate = 0.0;
    std::vector<float> left, right;

    double seconds() const { return static_cast<double> (left.size()) / rate; }
};

/** Reads a stereo file of 16 bits as ffmpeg writes it without tags; empty for any other. */
Wav readWav (const std::string& path)
{
    Wav wav;
    std::ifstream in (path, std::ios::binary);
    char header[44] {};
    if (!in.read (header, sizeof header) || std::memcmp (header + 36, "data", 4) != 0 || header[22] != 2)
        return wav;
    uint32_t rate = 0;
    std::memcpy (&rate, header + 24, 4);
    wav.rate = rate;
    std::vector<char> bytes ((std::istreambuf_iterator<char> (in)), {});
    for (size_t i = 0; i + 4 <= bytes.size(); i += 4)
    {
        int16_t pair[2];
        std::memcpy (pair, bytes.data() + i, 4);
        wav.left.push_back (static_cast<float> (pair[0]) / 32768.0f);
        wav.right.push_back (static_cast<float> (pair[1]) / 32768.0f);
    }
    return wav;
}

std::optional<RawSound> hear (const Wav& wav)
{
    constexpr size_t block = 16384;
    SoundExtractor extractor (wav.rate);
    for (size_t i = 0; i < wav.left.size(); i += block)
        extractor.add (wav.left.data() + i, wav.right.data() + i,
                       static_cast<int> (std::min (block, wav.left.size() - i)));
    return extractor.finish();
}

int cost (const std::vector<std::string>& files)
{
    for (const auto& file : files)
    {
        const auto wav = readWav (file);
        if (wav.left.empty())
            continue;
        auto least = 1e9;
        for (int round = 0; round < 3; ++round)
        {
            const auto begin = now();
            hear (wav);
            least = std::min (least, now() - begin);
        }
        std::printf ("%.0f x real time  %s\n", wav.seconds() / least, file.c_str());
    }
    return 0;
}

/** A track like a real one: about as far from it as songs of one style are from each other. */
SimilarityDescription madeUpAround (const SimilarityDescription& real, std::minstd_rand& random)
{
    auto made = real;
    std::normal_distribution<float> spread (0.0f, 15.0f);
    const auto stray = [&] (uint8_t& value, float by)
    { value = static_cast<uint8_t> (std::clamp (static_cast<float> (value) + by, 0.0f, 255.0f)); };
    for (auto& value : made.whole)
        stray (value, spread (random));
    for (size_t i = 0; i < SimilarityDescription::partDims; ++i)
    {
        const auto together = spread (random);
        for (auto& part : made.parts)
            stray (part[i], together + 0.5f * spread (random));
    }
    made.tempoBpm = 80.0f + static_cast<float> (random() % 1000) * 0.1f;
    made.key = static_cast<int8_t> (random() % 24);
    return made;
}

/** A made-up track that lies about as far from others as real ones do. */
SimilarityDescription madeUpAnywhere (std::minstd_rand& random)
{
    SimilarityDescription made;
    std::normal_distribution<float> spread (128.0f, 25.0f);
    const auto byte = [&] { return static_cast<uint8_t> (std::clamp (spread (random), 0.0f, 255.0f)); };
    for (auto& value : made.whole)
        value = byte();
    made.partCount = SimilarityDescription::mostParts;
    for (size_t i = 0; i < SimilarityDescription::partDims; ++i)
    {
        const auto centre = byte();
        for (auto& part : made.parts)
            part[i] = static_cast<uint8_t> (
                std::clamp (static_cast<int> (centre) + static_cast<int> (random() % 31) - 15, 0, 255));
    }
    made.seconds = 240.0f;
    made.tempoBpm = 80.0f + static_cast<float> (random() % 1000) * 0.1f;
    made.key = static_cast<int8_t> (random() % 24);
    return made;
}

/** The tracks of a list. */
std::vector<SimilarityDescription> describedIn (const std::string& listFile)
{
    std::vector<SimilarityDescription> described;
    std::ifstream in (listFile);
    for (std::string line; std::getline (in, line);)
        if (line.starts_with ("track\t"))
            if (const auto wav = readWav (line.substr (line.rfind ('\t') + 1)); !wav.left.empty())
                if (const auto raw = hear (wav))
                    described.push_back (describe (*raw, 0.0));
    return described;
}

int store (size_t count, const std::vector<SimilarityDescription>& real)
{
    const std::string file = "similarity-bench.ses";
    std::filesystem::remove (file);
    std::minstd_rand random (1);
    const auto madeUp = [&real] (std::minstd_rand& draws)
    { return real.empty() ? madeUpAnywhere (draws) : madeUpAround (real[draws() % real.size()], draws); };
    const auto pathOf = [] (size_t i)
    {
        return "/home/somebody/Music/An Artist of Some Fame/An Album of Songs/" + std::to_string (i)
               + " - A Song.flac";
    };
    {
        SessionStore session;
        auto begin = now();
        for (size_t i = 0; i < count; ++i)
            session.store (pathOf (i), madeUp (random));
        std::printf ("store: %.1f us a track, with the draws of the sample\n",
                     1e6 * (now() - begin) / static_cast<double> (count));
        begin = now();
        session.save (file);
        std::printf ("save: %.0f ms the whole, ", 1e3 * (now() - begin));
        begin = now();
        session.store (pathOf (count), madeUp (random));
        session.save (file);
        std::printf ("%.2f ms one more track\n", 1e3 * (now() - begin));
    }
    std::printf ("size: %.1f MB, %.0f bytes a track\n",
                 static_cast<double> (std::filesystem::file_size (file)) / 1e6,
                 static_cast<double> (std::filesystem::file_size (file)) / static_cast<double> (count + 1));
    SessionStore session;
    const auto begin = now();
    session.load (file);
    std::printf ("start: %.1f ms\n", 1e3 * (now() - begin));
    for (const auto weight : { 0.0f, 0.25f })
    {
        std::vector<double> times;
        for (size_t i = 0; i < 50; ++i)
        {
            const auto asked = now();
            session.similar (pathOf (i * count / 50), { 20, weight, 0.6f * weight, 0 });
            times.push_back (1e3 * (now() - asked));
        }
        std::sort (times.begin(), times.end());
        std::printf ("question, %s: %.2f ms in the middle, %.2f ms at most of 50\n",
                     weight > 0.0f ? "sound, tempo and key" : "sound", times[25], times[49]);
    }
    std::filesystem::remove (file);
    return 0;
}

struct Heard
{
    std::string group, path;
    SimilarityDescription description;
    std::vector<float> plain;
};

/** The share of tracks of the same group among the ten first, and the skew of how often tracks stand among them. */
void printRanks (const char* name, const std::vector<Heard>& tracks,
                 const std::function<std::vector<size_t> (size_t)>& ten)
{
    auto hits = 0.0, places = 0.0;
    std::vector<double> stands (tracks.size());
    for (size_t i = 0; i < tracks.size(); ++i)
        for (const auto k : ten (i))
        {
            hits += tracks[k].group == tracks[i].group ? 1.0 : 0.0;
            places += 1.0;
            stands[k] += 1.0;
        }
    const auto count = static_cast<double> (tracks.size()), mean = places / count;
    auto second = 0.0, third = 0.0;
    for (const auto s : stands)
    {
        second += (s - mean) * (s - mean) / count;
        third += (s - mean) * (s - mean) * (s - mean) / count;
    }
    std::printf ("%-34s same group among the first 10: %.3f, hubness %.2f\n", name, hits / places,
                 third / std::pow (second, 1.5));
}

std::vector<size_t> firstTen (size_t count, size_t asked, const std::function<double (size_t)>& distanceTo)
{
    std::vector<std::pair<double, size_t>> order;
    for (size_t k = 0; k < count; ++k)
        if (k != asked)
            order.emplace_back (distanceTo (k), k);
    std::sort (order.begin(), order.end());
    std::vector<size_t> ten;
    for (size_t i = 0; i < std::min<size_t> (10, order.size()); ++i)
        ten.push_back (order[i].second);
    return ten;
}

int judge (const std::string& listFile)
{
    std::vector<Heard> tracks;
    std::map<std::string, size_t> places;
    struct Copy
    {
        std::string kind, original;
        SimilarityDescription description;
    };
    std::vector<Copy> copies;
    std::map<std::string, int> keys;
    auto keyCount = 0;

    std::ifstream in (listFile);
    for (std::string line; std::getline (in, line);)
    {
        std::vector<std::string> fields;
        std::istringstream parts (line);
        for (std::string field; std::getline (parts, field, '\t');)
            fields.push_back (field);
        const auto wav = fields.size() >= 3 ? readWav (fields.back()) : Wav();
        const auto raw = wav.left.empty() ? std::nullopt : hear (wav);
        if (!raw)
        {
            std::fprintf (stderr, "left out: %s\n", line.c_str());
            continue;
        }
        if (fields[0] == "track")
        {
            places[fields[2]] = tracks.size();
            tracks.push_back ({ fields[1], fields[2], describe (*raw, 0.0), raw->plain });
        }
        else if (fields[0] == "copy" && fields.size() == 4)
            copies.push_back ({ fields[1], fields[2], describe (*raw, 0.0) });
        else if (fields[0] == "key")
        {
            const auto truth = std::atoi (fields[1].c_str()), found = raw->tonality.key;
            const auto steps = Fit::isKey (found) ? Fit::fifthsBetween (truth, found) : 6;
            const auto isSameMode = (truth < 12) == (found < 12);
            ++keys[found == truth                        ? "right"
                   : steps == 0                          ? "relative"
                   : std::abs (steps) == 1 && isSameMode ? "fifth"
                   : truth % 12 == found % 12            ? "parallel"
                                                         : "other"];
            ++keyCount;
        }
    }

    if (tracks.size() > 1)
    {
        auto chance = 0.0;
        for (const auto& track : tracks)
            chance += static_cast<double> (std::count_if (tracks.begin(), tracks.end(),
                                                          [&] (const auto& other)
                                                          { return other.group == track.group; })
                                           - 1);
        std::printf ("%zu tracks; chance %.3f\n", tracks.size(),
                     chance / static_cast<double> (tracks.size() * (tracks.size() - 1)));
        auto sum = 0.0, squares = 0.0, pairs = 0.0;
        for (size_t i = 0; i < tracks.size(); ++i)
            for (size_t k = 0; k < i; ++k)
            {
                const auto apart =
                    static_cast<double> (distance (tracks[i].description, tracks[k].description));
                sum += apart;
                squares += apart * apart;
                pairs += 1.0;
            }
        std::printf ("distances: mean %.2f, spread %.2f\n", sum / pairs,
                     std::sqrt (squares / pairs - sum * sum / pairs / pairs));
        printRanks ("mean cepstrum, Euclid:", tracks,
                    [&] (size_t i)
                    {
                        return firstTen (tracks.size(), i,
                                         [&] (size_t k)
                                         {
                                             auto sum = 0.0;
                                             for (size_t d = 0; d < tracks[i].plain.size(); ++d)
                                                 sum += std::pow (static_cast<double> (tracks[i].plain[d]
                                                                                       - tracks[k].plain[d]),
                                                                  2);
                                             return sum;
                                         });
                    });
        printRanks ("plain distance:", tracks,
                    [&] (size_t i)
                    {
                        return firstTen (tracks.size(), i,
                                         [&] (size_t k) {
                                             return static_cast<double> (
                                                 distance (tracks[i].description, tracks[k].description));
                                         });
                    });
        SessionStore session;
        for (const auto& track : tracks)
            session.store (track.path, track.description);
        printRanks ("as it answers:", tracks,
                    [&] (size_t i)
                    {
                        std::vector<size_t> ten;
                        const auto found = session.similar (tracks[i].path, { 10, 0.0f, 0.0f, 1 }).value();
                        for (const auto& each : found)
                            ten.push_back (places.at (each.path));
                        return ten;
                    });
        std::map<std::string, std::array<int, 3>> ranks; // all, first, taken for a copy
        for (const auto& copy : copies)
        {
            if (places.count (copy.original) == 0)
                continue;
            session.store ("copy", copy.description);
            const auto found = session.similar ("copy", { 1, 0.0f, 0.0f, 1 }).value();
            auto& rank = ranks[copy.kind];
            ++rank[0];
            rank[1] += found.front().path == copy.original ? 1 : 0;
            rank[2] += isCopy (copy.description, tracks[places.at (copy.original)].description) ? 1 : 0;
        }
        for (const auto& [kind, rank] : ranks)
            std::printf ("%-10s the song itself comes first for %d of %d; told as a copy: %d\n", kind.c_str(),
                         rank[1], rank[0], rank[2]);
        auto mistaken = 0;
        for (size_t i = 0; i < tracks.size(); ++i)
            for (size_t k = 0; k < i; ++k)
                if (isCopy (tracks[i].description, tracks[k].description))
                {
                    ++mistaken;
                    std::printf ("told as copies: %s and %s\n", tracks[i].path.c_str(),
                                 tracks[k].path.c_str());
                }
        std::printf ("pairs of tracks told as copies: %d\n", mistaken);
    }
    for (const auto& [what, count] : keys)
        std::printf ("key %s: %d of %d\n", what.c_str(), count, keyCount);
    return 0;
}
}

int main (int count, char** arguments)
{
    const std::vector<std::string> words (arguments + 1, arguments + count);
    if (words.size() >= 2 && words[0] == "cost")
        return cost ({ words.begin() + 1, words.end() });
    if (words.size() >= 2 && words[0] == "store")
        return store (static_cast<size_t> (std::max (1, std::atoi (words[1].c_str()))),
                      words.size() > 2 ? describedIn (words[2]) : std::vector<SimilarityDescription>());
    if (words.size() == 2 && words[0] == "judge")
        return judge (words[1]);
    std::fprintf (stderr, "usage: bench_similarity cost FILE.wav ... | store TRACKS [LIST] | judge LIST\n");
    return 2;
}
