#pragma once

#include "host/VornBasics.h"

class QWidget;

// The application as the editors' host: errors in a message box and on
// stderr, a data folder under the user's data directory, and the question
// before a changed layout closes.
class DesktopHost : public VornBasics {
public:
    // window receives the test-mode values and status texts of every editor.
    explicit DesktopHost(QWidget* window);
    ~DesktopHost() override;

    void ShowError(const char* text) override;
    int GetSizeLimitMode(int) override { return 0; }
    std::string GetDataFolder() override;
    // Save, Don't Save or Cancel: 4, 3 or 2.
    int AskSaveChanges(void* editor, const char* path) override;
    int QueryTitle(int) override { return 0; }

private:
    QWidget* window_;
};
