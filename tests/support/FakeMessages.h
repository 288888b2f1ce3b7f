#pragma once

#include "link/Messages.h"

#include <string>
#include <vector>

/// A user who reads every message at once and closes every question unanswered.
class FakeMessages : public Messages {
public:
    std::vector<std::string> shown;
    std::vector<std::string> asked;

    void ShowMessage(const std::string &text) override { shown.push_back(text); }
    void ShowPlainBox(const std::string &text) override { shown.push_back(text); }
    void AskYesNo(const std::string &question) override { asked.push_back(question); }
};
