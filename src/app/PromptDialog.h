#pragma once

#include <string>

namespace tlm {

// The one-line prompt (go to): a prompt, an edit with the initial text, OK and Cancel. The window
// side only creates the controls and hands the user's choices to these handlers.
struct PromptDialog {
    std::u16string title;
    std::u16string prompt;
    std::u16string text;
    std::u16string result;
    bool accepted = false;
    bool closed = false;

    // OK: the edit's text is the answer.
    void Accept(std::u16string editText);
    // Cancel, Esc and the close box: no answer.
    void Cancel();
    // The window is gone, whatever ended it.
    void OnDestroy();
};

} // namespace tlm
