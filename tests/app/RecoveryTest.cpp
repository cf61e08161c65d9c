// Unsaved changes outlive a crash: the recovery copies a killed run leaves are offered at the
// next start.
#include "AppFixture.h"

#include <QProcess>
#include <QThread>

#include <csignal>
#include <filesystem>

namespace {

TEST_F(AppTest, AKilledApplicationsUnsavedLayoutIsOfferedOnceAtTheNextStartToReopenOrDiscard)
{
    const std::string layout = CopyOfExample("Live.VornOsc");
    QProcess vornosc;
    vornosc.start(QStringLiteral(VORNOSC_BINARY),
                  {QStringLiteral("--insert"), QStringLiteral(DATA_DIR "/parameters.json"),
                   QString::fromStdString(layout)});
    ASSERT_TRUE(vornosc.waitForStarted());
    const QString killed = RecoveryFolder(vornosc.processId());
    for (int wait = 0; wait < 200 && QDir(killed, QStringLiteral("*.VornOsc")).isEmpty(); ++wait)
        QThread::msleep(50);
    ::kill(static_cast<pid_t>(vornosc.processId()), SIGKILL);
    ASSERT_TRUE(vornosc.waitForFinished());
    std::filesystem::rename(killed.toStdString(), folder / "left");
    const QString running = RecoveryFolder(1);  // init never ends
    std::filesystem::copy(folder / "left", running.toStdString());

    for (const std::string answer : {"Discard", "Open"}) {
        SCOPED_TRACE(answer);
        std::filesystem::copy(folder / "left", killed.toStdString());
        answered.clear();
        answers = {answer};
        window->OfferRecovery();
        ASSERT_EQ(answered.size(), 1u);
        EXPECT_NE(answered[0].find("\n<folder>/Live.VornOsc, changed "), std::string::npos);
        EXPECT_FALSE(QDir(killed).exists());
        ASSERT_EQ(window->Frames().size(), answer == "Open" ? 1 : 0);
    }
    EXPECT_TRUE(Frame().LayoutPath().contains(QStringLiteral("/Recovered/Live (recovered ")));
    EXPECT_NE(ReadWholeFile(Frame().LayoutPath().toStdString())->find("Cutoff"), std::string::npos)
        << "the copy holds the inserted control";
    EXPECT_EQ(QDir(running, QStringLiteral("*.VornOsc")).count(), 1)
        << "a running application keeps its copies";
    QDir(running).removeRecursively();
    answers = {"Discard"};
    window->OfferRecovery();
    EXPECT_EQ(answers.size(), 1u) << "nothing is left to offer: no question";
}

}  // namespace
