#include "support/files/PrivateFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

TEST (PrivateFolder, IsNobodyElsesAndGoesWithItsOwner)
{
    juce::File folder;
    {
        const auto former = ::umask (0); // which would let everybody in
        const PrivateFolder first, second;
        ::umask (former);
        folder = first.folder;
        EXPECT_NE (folder, second.folder);
        ASSERT_TRUE (folder.isDirectory());
        struct stat status = {};
        ASSERT_EQ (::stat (folder.getFullPathName().toRawUTF8(), &status), 0);
        EXPECT_EQ (status.st_mode & 07777, 0700u);
        EXPECT_EQ (status.st_uid, ::geteuid());
        EXPECT_TRUE (first.file ("a/b.txt").create().wasOk());
    }
    EXPECT_FALSE (folder.exists());
}
