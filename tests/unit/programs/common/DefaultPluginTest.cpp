#include <common/DefaultPlugin.h>

#include <QCoreApplication>
#include <QDir>

#include <gtest/gtest.h>

TEST(DefaultPlugin, Is_beside_the_folder_of_the_program)
{
    const QDir programs(QCoreApplication::applicationDirPath());
    EXPECT_EQ(QDir::cleanPath(defaultPluginFile()),
              QDir::cleanPath(programs.filePath("../plugins/viewconnector.so")));
}
