#include "platform/QZFrameComFun.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Windows of tests need no display; another platform may be asked for.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    // Every pane opens the figures' file of its user: not the real one's.
    const QTemporaryDir folder;
    QZFrameComFun::setRootFolder(folder.path());
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
