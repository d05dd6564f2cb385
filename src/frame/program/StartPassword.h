#pragma once
// The start password: how it is kept in the settings, how an answer is checked, and the question at the start. It keeps a
// casual visitor out of the program and protects no data: the registry stays open to every other program.
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "frame/Context.h"

namespace brenvik {

// BVKOPT1: "True" or "False", scrambled. Nothing if the text cannot be unscrambled to one of them.
std::string passwordSwitchText(bool on);
std::optional<bool> passwordSwitch(std::string_view scrambled);

// Whether the scrambled form can hold it: only letters of Windows-1252.
bool isPossiblePassword(std::string_view password);

// Off: the password becomes the empty text. The salt is the time of the change. Answers nothing; the settings hold it then.
void setStartPassword(Settings& settings, bool on, std::string_view password, const DateTime& now);

// Ignores case and blanks at the ends. False too if the stored password is damaged, whatever the answer, and for answers
// that no password can be.
bool isStartPassword(const Settings& settings, std::string_view answer);

// The question for the password. pruefen tells whether an answer is right.
struct PWAbfrageRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_PWAbfrage"; }
    std::function<bool(std::string_view)> check;
    bool passed = false;
};

// The step of the load sequence. True: the password is off or was given; false: the process has to end. What is stored
// may be damaged so that no answer fits: then the user is told before he is asked, and only switching the question off in
// the registry helps.
bool StartPassword(FrameContext& ctx);

}  // namespace brenvik
