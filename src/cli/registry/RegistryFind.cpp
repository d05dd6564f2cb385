// registry find
#include <fmt/format.h>

#include <chrono>
#include <cstdio>
#include <iostream>

#include "cli/registry/RegistryGroup.h"
#include "frame/platform/HostTerminal.h"
#include "frame/text/ShownOutput.h"
#include "registry/search/Search.h"

namespace brenvik::cli {
namespace {

using Clock = std::chrono::steady_clock;
using nlohmann::ordered_json;

constexpr std::size_t ShownData = 256;   // bytes of a hit's data in a line
constexpr auto LongestWait = std::chrono::milliseconds(20), ProgressEvery = std::chrono::milliseconds(200);
constexpr std::size_t FullBuffer = 65536;

struct SearchOrder {
    std::string text, path;
    bool regex = false, progress = false, keys = false, names = false, data = false;
};

// Prints hits soon, but not each with a write of its own.
class HitList {
public:
    HitList(Program& program, bool json, bool progress) : ctx_(program.context()), json_(json), progress_(progress) {}
    ~HitList() { flush(); }
    HitList(const HitList&) = delete;
    HitList& operator=(const HitList&) = delete;

    void hit(const Ort& place, const Hits& hit) {
        ++hits_;
        const std::string key = place.shown(hit.key);
        if (json_) {
            ordered_json line{{"key", key}};
            if (!hit.isKey) line.update(valueJson(ctx_, hit.name, *hit.value));
            pending_ += jsonText(line, -1);
        } else {
            pending_ += oneLine(key) + "\\";
            if (!hit.isKey) {
                pending_ += "\t" + valueLabel(ValueName::named(std::string(hit.name))) + "\t" + typeName(ctx_, hit.value->type) + "\t" +
                            shownData(*hit.value, ShownData);
            }
        }
        pending_ += '\n';
        if (pending_.size() > FullBuffer) flush();
    }

    void pass() {
        ++keys_;
        if (pending_.empty() && !progress_) return;
        const auto now = Clock::now();
        if (!pending_.empty() && now - flushed_ > LongestWait) flush();
        if (progress_ && now - told_ > ProgressEvery) {
            told_ = now;
            tellProgress("");
        }
    }
    void passOver(const std::string& key, const RegError& why) {
        flush();
        std::cerr << (progress_ ? "\r" : "") << "Nicht lesbar: " << oneLine(key) << "\\\t" << oneLine(why.what()) << "\n";
    }
    void flush() {
        std::cout << pending_ << std::flush;
        pending_.clear();
        flushed_ = Clock::now();
    }
    void endProgress() {
        if (progress_) tellProgress("\n");
    }

private:
    void tellProgress(const char* end) {    // over and over in one line
        ShownOutput::putRaw(std::cerr, fmt::format("\r{} Schlüssel durchsucht, {} Treffer{}", keys_, hits_, end));
        std::cerr.flush();
    }

    Context& ctx_;
    bool json_, progress_;
    std::string pending_;
    std::uint64_t keys_ = 0, hits_ = 0;
    Clock::time_point flushed_{}, told_ = Clock::now();
};

struct SearchPlace {
    Ort place;
    std::string skip;
};

// Without a path everything that the machine's registry really holds: the other roots are second names of parts of it.
std::vector<SearchPlace> placesOf(Program& program, Places& places, const std::string& path) {
    if (!path.empty()) {
        const Ort place = places.resolve(path);
        if (!place.whole) {
            if (!place.store->keyExists(place.path.root, place.key()))
                throw RegError(regerr::NoAccess, "Der Schlüssel ist nicht vorhanden: " + path);
            return {{place, {}}};
        }
        std::vector<SearchPlace> all;
        for (const Root root : rootsOf(place)) {
            all.push_back({place, {}});
            all.back().place.path.root = root;
        }
        return all;
    }
    const Context& ctx = program.context();
    std::vector<SearchPlace> all;
    if (ctx.blnLokal) all.push_back({places.resolve("HKCU"), {}});
    all.push_back({places.resolve("HKLM"), {}});
    all.push_back({places.resolve("HKU"), ctx.blnLokal ? ctx.strEigeneSID : std::string()});
    return all;
}

int find(Program& program, Places& places, const SearchOrder& order, bool json) {
    if (order.text.empty()) return failed("Der Suchtext ist leer.", 2);
    std::unique_ptr<SearchPattern> pattern;
    try {
        pattern = order.regex ? makeRegexPattern(order.text) : makeTextMuster(order.text);
    } catch (const SearchPatternError& error) {
        return failed(error.what(), 2);
    }
    SearchOptions options;
    if (order.keys || order.names || order.data) {
        options.keys = order.keys;
        options.names = order.names;
        options.data = order.data;
    }
    const host::InterruptWatch watch;
    HitList list(program, json, order.progress || host::isTerminal(stderr));
    bool done = true, whole = true;
    try {
        for (const SearchPlace& at : placesOf(program, places, order.path)) {
            options.skipKey = at.skip;
            const SearchTarget target{[&](const Hits& hit) { list.hit(at.place, hit); },
                                [&](std::string_view) { list.pass(); }, [&] { return watch.interrupted() || !std::cout.good(); },
                                [&](std::string_view key, const RegError& why) {
                                    whole = false;
                                    list.passOver(at.place.shown(key), why);
                                }};
            done = done && suchen(*at.place.store, at.place.path.root, at.place.key(), *pattern, options, target);
        }
    } catch (const SearchPatternError& error) {
        list.flush();
        return failed(error.what());
    }
    list.flush();
    list.endProgress();
    if (watch.interrupted()) return failed("Die Suche wurde abgebrochen.", host::InterruptedExitCode);
    return whole ? 0 : failed("Es wurde nicht alles durchsucht.");
}

}  // namespace

void addSearchCommand(const RegistryGroup& group) {
    const auto order = std::make_shared<SearchOrder>();
    auto* command = group.add("find", "Text in Namen von Schlüsseln, Namen von Werten und Daten suchen; Groß- und Kleinschreibung gilt gleich");
    command->add_option("TEXT", order->text, "Gesuchter Text; Daten werden so durchsucht, wie list sie ausgibt")->required();
    command->add_option("PATH", order->path, std::string(PathHelp) + "; ohne PATH die ganze Registry");
    command->add_flag("--regex", order->regex, "TEXT ist ein regulärer Ausdruck (ECMAScript)");
    command->add_flag("--keys", order->keys, "Nur in Namen von Schlüsseln suchen (mit --names und --data verknüpfbar)");
    command->add_flag("--names", order->names, "Nur in Namen von Werten suchen");
    command->add_flag("--data", order->data, "Nur in Daten suchen");
    command->add_flag("--progress", order->progress, "Fortschritt auf der Fehlerausgabe zeigen, auch wenn sie kein Terminal ist");
    group.maySalvage(command);
    group.on(command, [&call = group.call, order](Program& p, Places& places) { return find(p, places, *order, call.json); });
}

}  // namespace brenvik::cli
