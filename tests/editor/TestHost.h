#pragma once

#include "host/Messages.h"
#include "tests/support/FakeHost.h"

#include <nlohmann/json.hpp>

#include <QPointer>
#include <QWidget>

#include <string>
#include <vector>

// The host object the editors get from AllocVornBasics, with scripted answers.
struct TestBasics : FakeHost {
    int saveAnswer = 3, titleAnswer = 0, saveQuestions = 0;
    std::vector<int> allocArguments;  // what the last AllocVornBasics was given

    int AskSaveChanges(void*, const char*) override { return ++saveQuestions, saveAnswer; }
    int QueryTitle(int) override { return titleAnswer; }
};
inline TestBasics theTestBasics;  // what AllocVornBasics gives

// A window of the test host. As the host's window it answers a request for a
// frame as told, keeps the request and notes the status texts, test values
// ([value, address components...]) and operated controls ("NAME at ADDRESS
// (TYPE, MIN to MAX): VALUE on PHASE") it receives, and, watching the
// application, the help topics asked of it ("help topic N"); as a frame it
// keeps its editor and title, and shows the module's menus in a menu bar above
// the editor, routing their commands to it.
class TestWindow : public QWidget {
public:
    enum class Answer { kFrame, kNoFrame, kNotAWindow } answer = Answer::kFrame;
    HostRequest lastRequest;
    QPointer<TestWindow> frame;
    QPointer<QObject> notAWindow;   // what kNotAWindow answered
    bool notAWindowClosed = false;  // by a message to it
    QPointer<QWidget> editor;
    std::string title;
    nlohmann::json received = nlohmann::json::array();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QObject* MakeFrame(QMenu* moduleMenu);
};
