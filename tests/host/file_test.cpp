#include <orvmath/host/archive.h>
#include <orvmath/host/file.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

TEST(CFileTest, ArchiveRoundTripThroughARealFile) {
    const std::string path = ::testing::TempDir() + "orvmath_host_file_test.bin";
    {
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive ar(&file, CArchive::store, 16);
        for (int i = 0; i < 100; ++i) ar << i * 0.5;
        ar.Close();
        EXPECT_EQ(file.GetLength(), 800u);
    }
    CFile file(path.c_str(), CFile::modeRead);
    {
        CArchive ar(&file, CArchive::load, 64);
        EXPECT_NO_THROW(ar.CheckCanRead(800));
        EXPECT_THROW(ar.CheckCanRead(801), CArchiveException);
        double d = 0;
        for (int i = 0; i < 10; ++i) ar >> d;
        EXPECT_EQ(d, 4.5);
        ar.Flush();  // hands the read-ahead back: the file stands after 10 doubles
        EXPECT_EQ(file.GetPosition(), 80u);
    }
    EXPECT_EQ(file.Seek(-8, CFile::end), 792u);
    double last = 0;
    EXPECT_EQ(file.Read(&last, 8), 8u);
    EXPECT_EQ(last, 49.5);
    EXPECT_EQ(file.Read(&last, 8), 0u);
    EXPECT_THROW(file.Seek(-1, CFile::begin), CFileException);
    file.Close();
    std::remove(path.c_str());
}

TEST(CFileTest, MissingFileFailsToOpen) {
    CFile file;
    EXPECT_FALSE(file.Open("/nonexistent-dir/none.bin", CFile::modeRead));
    try {
        CFile missing("/nonexistent-dir/none.bin", CFile::modeRead);
        ADD_FAILURE() << "no exception";
    } catch (const CFileException& e) {
        EXPECT_EQ(e.m_cause, CFileException::fileNotFound);
    }
    EXPECT_THROW(file.Read(nullptr, 0), CFileException);  // not open
}

TEST(CMemFileTest, FixedBlockReadsItsBytesAndRefusesToGrow) {
    BYTE block[4] = {1, 2, 3, 4};
    CMemFile file(block, sizeof block);
    EXPECT_EQ(file.GetLength(), 4u);
    BYTE b[4] = {};
    EXPECT_EQ(file.Read(b, 3), 3u);
    EXPECT_EQ(file.Read(b, 3), 1u);
    EXPECT_EQ(b[0], 4);
    file.SeekToBegin();
    const BYTE nine = 9;
    file.Write(&nine, 1);
    EXPECT_EQ(block[0], 9);
    file.SeekToEnd();
    EXPECT_THROW(file.Write(&nine, 1), CMemoryException);
    EXPECT_THROW(file.Seek(-5, CFile::end), CFileException);
}

TEST(CMemFileTest, WritingPastTheEndZeroFillsTheGapAndDetachHandsOverTheBlock) {
    CMemFile file(4);
    const BYTE seven = 7;
    file.Write(&seven, 1);
    EXPECT_EQ(file.Seek(3, CFile::current), 4u);
    file.Write(&seven, 1);
    ASSERT_EQ(file.GetLength(), 5u);
    BYTE* p = file.Detach();
    EXPECT_EQ(std::string(p, p + 5), std::string("\x07\0\0\0\x07", 5));
    std::free(p);
    EXPECT_EQ(file.GetLength(), 0u);
}
