#pragma once

#include "host/VornBasics.h"

class QWidget;

// The application as the editors' host: errors in a message box and on
// stderr, a data folder in the user's documents, where the editors' dialogs
// start, and the question before a changed layout closes.
class DesktopHost : public VornBasics {
public:
    // window receives the test-mode values and status texts of every editor.
    explicit DesktopHost(QWidget* window);
    ~DesktopHost() override;

    void ShowError(const char* text) override;
    int GetSizeLimitMode(int) override { return 0; }
    std::string GetDataFolder() override;
    // Save, Don't Save or Cancel: 4, 3 or 2. Saving a layout that was never
    // saved runs the editor's Save As first, and a Save As cancelled or
    // failed answers Cancel.
    int AskSaveChanges(void* editor, const char* path) override;
    // The next question offers Save As in place of Save: the layout's own
    // file could not be written.
    void OfferSaveAsNext() { offerSaveAs_ = true; }
    int QueryTitle(int) override { return 0; }

    // How many errors have been shown so far: a save that fails shows one.
    int ErrorsShown() const { return errorsShown_; }
    // How many times the question before closing was asked, and whether the
    // last answer was Save.
    int QuestionsAsked() const { return questionsAsked_; }
    bool LastAnswerWasSave() const { return lastAnswerWasSave_; }

private:
    // Whether the editor's layout has changes its file does not have.
    static bool IsModified(void* editor);

    int errorsShown_ = 0;
    int questionsAsked_ = 0;
    bool lastAnswerWasSave_ = false;
    bool offerSaveAs_ = false;
    QWidget* window_;
};
