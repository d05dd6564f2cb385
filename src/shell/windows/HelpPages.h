#pragma once
// Which page of the help answers which topic: the one table behind contents, F1, help buttons and the menu.
#include <QString>
#include <cstdint>
#include <span>
#include <string_view>

namespace brenvik {

struct HelpPage {
    int topic;
    const char* datei;          // in the folder "hilfe" beside the program
    const char* titel;          // as in the page's <title>
    const char* chapter;        // heading in the contents
};

std::span<const HelpPage> helpPages();

// Whether a help file name, with or without a folder of either spelling, is one that our pages stand for.
bool isOwnHelp(std::string_view datei);

// nullptr: there is no page for that topic.
const HelpPage* helpPage(int topic);
const HelpPage* helpPage(const QString& datei);

// The topic for a Tip: its own number if there is a page for it, else the page of its first panel's kind.
int topicOfTip(std::int32_t hilfeNummer, std::int16_t ausgabeart);

// The topic for a window, by its object name.
int topicOfWindow(const QString& name);

}  // namespace brenvik
