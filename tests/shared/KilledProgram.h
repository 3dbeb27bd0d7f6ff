#pragma once

#include <juce_core/juce_core.h>

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <csignal>
#include <string>
#include <unistd.h>
#include <vector>

/** A program that works until it is killed, and writes one byte for each unit of its work that is stored. */
class KilledProgram
{
public:
    KilledProgram (const std::string& program, const juce::StringArray& arguments)
    {
        int ends[2];
        EXPECT_EQ (::pipe (ends), 0);
        std::vector<std::string> words { program };
        for (const auto& argument : arguments)
            words.push_back (argument.toStdString());
        std::vector<char*> raw;
        for (auto& word : words)
            raw.push_back (word.data());
        raw.push_back (nullptr);
        child = ::fork();
        if (child == 0)
        {
            ::dup2 (ends[1], STDOUT_FILENO);
            ::close (ends[0]);
            ::execv (program.c_str(), raw.data());
            ::_exit (3);
        }
        ::close (ends[1]);
        said = ends[0];
    }

    /** Waits until it has stored so many units. */
    void waitFor (int units)
    {
        while (stored < units && read())
        {
        }
    }

    /** Kills it in the midst of what it does next. @returns how many units it said to have stored */
    int kill()
    {
        ::kill (child, SIGKILL);
        while (read())
        {
        }
        ::close (said);
        auto status = 0;
        EXPECT_EQ (::waitpid (child, &status, 0), child);
        EXPECT_TRUE (WIFSIGNALED (status)) << "it ended by itself";
        return stored;
    }

private:
    bool read()
    {
        char bytes[256];
        const auto got = ::read (said, bytes, sizeof bytes);
        stored += got > 0 ? static_cast<int> (got) : 0;
        return got > 0;
    }

    pid_t child = -1;
    int said = -1, stored = 0;
};
