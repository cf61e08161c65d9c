#pragma once

#include "host/Messages.h"
#include "tests/support/FakeHost.h"

#include <QMenuBar>
#include <QPointer>
#include <QWidget>

#include <string>
#include <vector>

// The host object the editors get from AllocVornBasics, with scripted answers.
class TestBasics : public FakeHost {
public:
    int saveAnswer = 3;
    int saveQuestions = 0;
    int titleAnswer = 0;
    std::vector<int> allocArguments;  // the selectors of the last AllocVornBasics

    int AskSaveChanges(void*, const char*) override { return ++saveQuestions, saveAnswer; }
    int QueryTitle(int) override { return titleAnswer; }
};
TestBasics& TheTestBasics();

// A frame the host makes for an editor: it takes the editor, shows its title,
// and puts the module's menu in its menu bar, routing the menu's commands to
// its editor as a host's frame does.
class TestFrame : public QWidget {
public:
    explicit TestFrame(QWidget* parent, QMenu* moduleMenu);

    QPointer<QWidget> editor;
    std::string title;
    QMenuBar* menuBar;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

// The host's window, parent of the frames. It answers the editor-open request
// as told and keeps what arrived with it.
class TestHostWindow : public QWidget {
public:
    enum class Answer { kFrame, kNoFrame, kNotAWindow };
    Answer answer = Answer::kFrame;
    HostRequest lastRequest;
    QPointer<TestFrame> frame;
    QPointer<QObject> notAWindow;  // a frame that is no widget, answered to kNotAWindow
    bool notAWindowClosed = false;

protected:
    bool event(QEvent* event) override;
};
