#include "simulator/program/CPortAlias.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

class CPortAliasTest : public ::testing::Test {
protected:
    QTemporaryDir m_objFolder;
    std::string m_strPath = m_objFolder.filePath("com1").toStdString();
    std::unique_ptr<CPortAlias> m_objAlias = std::make_unique<CPortAlias>(m_strPath);
};

TEST_F(CPortAliasTest, LeadsWhereItWasLastToldTo) {
    EXPECT_FALSE(fs::is_symlink(m_strPath));
    m_objAlias->PointTo("/dev/pts/1");
    EXPECT_EQ(fs::read_symlink(m_strPath), "/dev/pts/1");
    m_objAlias->PointTo("/dev/pts/2");
    EXPECT_EQ(fs::read_symlink(m_strPath), "/dev/pts/2");
}

TEST_F(CPortAliasTest, GoesWhenItsOwnerDoes) {
    m_objAlias->PointTo("/dev/pts/1");
    m_objAlias.reset();
    EXPECT_FALSE(fs::is_symlink(m_strPath));
}

TEST_F(CPortAliasTest, WhatIsAlreadyThereStaysAndIsAnError) {
    std::ofstream(m_strPath) << "mine";
    EXPECT_THROW(m_objAlias->PointTo("/dev/pts/1"), std::runtime_error);
    m_objAlias.reset();
    EXPECT_EQ(fs::file_size(m_strPath), 4U);
}

TEST_F(CPortAliasTest, ALinkOfSomebodyElsesStaysAndIsAnError) {
    fs::create_symlink("/dev/pts/1", m_strPath);
    EXPECT_THROW(m_objAlias->PointTo("/dev/pts/1"), std::runtime_error);
    m_objAlias.reset();
    EXPECT_TRUE(fs::is_symlink(m_strPath));
}

TEST_F(CPortAliasTest, WhatHasTakenItsPlaceStays) {
    m_objAlias->PointTo("/dev/pts/1");
    fs::remove(m_strPath);
    fs::create_symlink("/dev/pts/9", m_strPath);
    EXPECT_THROW(m_objAlias->PointTo("/dev/pts/2"), std::runtime_error);
    m_objAlias.reset();
    EXPECT_EQ(fs::read_symlink(m_strPath), "/dev/pts/9");
}

TEST_F(CPortAliasTest, WithoutAPathThereIsNone) {
    CPortAlias objNone("");
    EXPECT_NO_THROW(objNone.PointTo("/dev/pts/1"));
    EXPECT_TRUE(fs::is_empty(m_objFolder.path().toStdString()));
}

}  // namespace
