#pragma once

/** The numeric results of the analysis and stretching family. */
namespace AnalysisError
{
inline constexpr int none = 0;
inline constexpr int noMemory = 1000001;
inline constexpr int wrongState = 5000002;
inline constexpr int badArgument = 5000003;
inline constexpr int badSampleRate = 5000004;
inline constexpr int badChannelCount = 5000005;
}
