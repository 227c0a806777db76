#include "record_bytes.h"

#include <orvmath/host/archive.h>
#include <orvmath/host/file.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

TEST(CFileTest, ArchiveRoundTripThroughARealFile) {
    const std::string path = ::testing::TempDir() + "orvmath_host_file_test.bin";
    {
        CFile out(path.c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive ar(&out, CArchive::store, 16);
        for (int i = 0; i < 100; ++i) ar << i * 0.5;
    }
    CFile file(path.c_str(), CFile::modeRead);
    EXPECT_EQ(file.GetLength(), 800u);
    BYTE last[8];
    EXPECT_EQ(file.Seek(-8, CFile::end), 792u);
    EXPECT_EQ(file.Read(last, 8), 8u);
    EXPECT_EQ(record_bytes::LittleEndianDouble(last), 49.5);  // the file is little-endian on every host
    EXPECT_EQ(file.Read(last, 8), 0u);
    EXPECT_THROW(file.Seek(-1, CFile::begin), CFileException);
    file.Close();
    std::remove(path.c_str());
    EXPECT_FALSE(file.Open("/nonexistent-dir/none.bin", CFile::modeRead));
    try {
        CFile missing("/nonexistent-dir/none.bin", CFile::modeRead);
        ADD_FAILURE() << "no exception";
    } catch (const CFileException& e) {
        EXPECT_EQ(e.m_cause, CFileException::fileNotFound);
    }
}

TEST(CMemFileTest, FixedBlockNeverGrowsAndAGrowingOneZeroFillsGaps) {
    BYTE block[4] = {1, 2, 3, 4}, b[4] = {};
    const BYTE nine = 9;
    CMemFile fixed(block, sizeof block), file(4);
    EXPECT_EQ(fixed.Read(b, 3), 3u);
    EXPECT_EQ(fixed.Read(b, 3), 1u);
    EXPECT_EQ(b[0], 4);
    fixed.SeekToBegin();
    fixed.Write(&nine, 1);  // in place
    EXPECT_EQ(block[0], 9);
    fixed.SeekToEnd();
    EXPECT_THROW(fixed.Write(&nine, 1), CMemoryException);
    EXPECT_THROW(fixed.Seek(-5, CFile::end), CFileException);
    file.Write(&nine, 1);
    EXPECT_EQ(file.Seek(3, CFile::current), 4u);
    file.Write(&nine, 1);
    ASSERT_EQ(file.GetLength(), 5u);
    BYTE* p = file.Detach();
    EXPECT_EQ(std::string(p, p + 5), std::string("\x09\0\0\0\x09", 5));
    std::free(p);
    EXPECT_EQ(file.GetLength(), 0u);
}
