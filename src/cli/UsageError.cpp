#include "cli/UsageError.h"

#include <algorithm>
#include <memory>
#include <sstream>

namespace brenvik::cli {
namespace {

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

// The piece of the library's message that names what is meant.
std::string before(const std::string& text, std::string_view mark) { return text.substr(0, text.find(mark)); }

// The library pads by bytes, and an umlaut has two.
class GermanFormatter final : public CLI::Formatter {
public:
    std::string make_option(const CLI::Option* option, bool positional) const override {
        const std::string name = make_option_name(option, positional) + make_option_opts(option);
        const auto further = std::count_if(name.begin(), name.end(), [](unsigned char c) { return (c & 0xC0) == 0x80; });
        std::ostringstream line;
        CLI::detail::format_help(line, name, make_option_desc(option), get_column_width() + static_cast<std::size_t>(further));
        return line.str();
    }
};

template <class Kind> bool is(const CLI::ParseError& error) { return dynamic_cast<const Kind*>(&error) != nullptr; }

}  // namespace

void germanHelp(CLI::App& app) {
    const auto formatter = std::make_shared<GermanFormatter>();
    app.formatter(formatter);
    formatter->label("Usage", "Aufruf");
    formatter->label("OPTIONS", "OPTIONEN");
    formatter->label("SUBCOMMAND", "BEFEHL");
    formatter->label("SUBCOMMANDS", "BEFEHLE");
    formatter->label("Positionals", "Angaben");
    formatter->label("REQUIRED", "nötig");
    formatter->label("INT", "ZAHL");
    formatter->label("Excludes", "nicht mit");
    formatter->label("Needs", "nur mit");
    for (CLI::Option* option : app.get_options()) {
        if (!option->get_positional() || option->nonpositional()) option->group("Optionen");
    }
    for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
        command->group("Befehle");
        germanHelp(*command);
    }
}

std::string usageProblem(const CLI::App& app, const CLI::ParseError& error) {
    const std::string text = error.what(), extra = joined(app.remaining(true));
    if (is<CLI::ExtrasError>(error)) return "Unbekannte Angabe: " + extra;
    if (is<CLI::RequiredError>(error)) {
        if (text.find("subcommand") == std::string::npos) return "Es fehlt: " + before(text, " is required");
        return extra.empty() ? "Es fehlt der Befehl." : "Unbekannter Befehl: " + extra;
    }
    if (is<CLI::ArgumentMismatch>(error)) return "Zu wenige oder zu viele Angaben: " + before(text, ":");
    if (is<CLI::ExcludesError>(error))
        return "Angaben, die einander ausschließen: " + before(text, " excludes ") + ", " + text.substr(text.rfind(' ') + 1);
    if (is<CLI::RequiresError>(error)) return "Zu " + before(text, " requires ") + " gehört auch " + text.substr(text.rfind(' ') + 1);
    const std::size_t colon = text.find(": ");
    return "Ungültige Angabe: " + (colon == std::string::npos ? text : text.substr(colon + 2));
}

}  // namespace brenvik::cli
