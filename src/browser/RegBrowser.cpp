#include "browser/RegBrowser.h"

#include <fmt/format.h>

#include "frame/Reports.h"
#include "frame/text/Characters.h"
#include "frame/text/Texts.h"
#include "registry/Upcase.h"
#include "registry/ValueOperations.h"
#include "registry/store/RegLimits.h"
#include "registry/store/RegLinks.h"
#include "registry/store/RegTree.h"
#include "tipengine/Messages.h"
#include "tipengine/TipEngine.h"
#include "tipengine/values/KeyImage.h"

namespace brenvik {
namespace {

constexpr const char* Titel = "BVK Registry Browser";
constexpr int TextUnknownType = 216;
constexpr Root Order[] = {Root::ClassesRoot, Root::CurrentConfig, Root::CurrentUser, Root::DynData, Root::LocalMachine, Root::Users};

std::string cut(std::string text) {
    if (text.size() > RegBrowser::LongestText) {
        std::size_t end = RegBrowser::LongestText;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
        text.resize(end);
        text += "...";
    }
    for (char& c : text)
        if (c == '\0') c = ' ';   // between the elements of a list
    return text;
}

std::string childPath(const std::string& key, const std::string& name) { return key + "\\" + name; }

// Keys that a Windows finds at their place only: the tops of its registry files, and links to other keys.
bool isFixture(const RegPath& path) {
    const auto is = [&](std::string_view name) { return sameName(path.key, name); };
    const bool top = path.key.find('\\') == std::string::npos;
    switch (path.root) {
        case Root::LocalMachine:
            return is("SOFTWARE") || is("SYSTEM") || is("SAM") || is("SECURITY") || is("HARDWARE") || is(ClassesPath) ||
                   is("SYSTEM\\CurrentControlSet") || is(HardwareProfilePath);
        case Root::Users: return top && (is(".DEFAULT") || sameName(path.key.substr(0, 4), "S-1-"));
        case Root::CurrentUser: return is(ClassesPath);
        default: return false;
    }
}

class Browser final : public RegBrowser {
public:
    Browser(Context& ctx, ChangeRecorder& recorder) : ctx_(ctx), recorder_(recorder), machine_(ctx.strRechnername) {}

    std::vector<std::string> roots() const override;
    std::string machine() const override { return machine_.empty() ? ctx_.strLokalerRechner : machine_; }
    bool exists(const std::string& key) override;
    std::vector<std::string> subKeys(const std::string& key) override;
    std::vector<BrowserValue> values(const std::string& key) override;
    std::optional<RawValue> value(const std::string& key, const std::string& name) override;
    std::string longKey(const std::string& path) override;
    bool writeValue(const std::string& key, const std::string& name, const std::optional<RawValue>& before, const RawValue& value) override;
    bool renameValue(const std::string& key, const std::string& name, const std::string& to) override;
    bool deleteValue(const std::string& key, const std::string& name) override;
    bool newKey(const std::string& parent, const std::string& name) override;
    bool renameKey(const std::string& key, const std::string& to) override;
    bool deleteKey(const std::string& key) override;
    bool mayRename(const std::string& key) override;
    void search(const std::string& key, const BrowserSearch& wanted, const std::function<void(BrowserHit)>& hit,
                const std::function<bool(const std::string& key)>& stop) override;
    void copyPath(const std::string& key, const std::optional<std::string>& name) override;
    void click() override { ctx_.click(); }
    bool changedAnything() const override { return changed_; }

private:
    RegStore& store(const std::string& path);
    std::optional<RawValue> rawAt(const std::string& key, const std::string& name);
    BrowserValue rowOf(std::string name, std::int32_t type, std::string text) const;
    bool refuse(std::string text);
    bool deletingAllowed();
    bool usableKeyName(const std::string& name);
    template <class Step> bool reported(const Step& step);
    Change newChange(Change::Art art) const;
    ValueChange valueChange(const std::string& key, const std::string& name, std::optional<RawValue> before, std::optional<RawValue> after) const;
    template <class Write> bool recorded(Change& change, const Write& write);
    void moveTree(const RegPath& from, const std::string& toKey);
    void removeTree(const std::string& key);

    Context& ctx_;
    ChangeRecorder& recorder_;
    std::string machine_;       // as the registry service is told
    bool changed_ = false;
};

std::vector<std::string> Browser::roots() const {
    std::vector<std::string> names;
    for (const Root root : Order) names.emplace_back(longRootName(root));
    return names;
}

template <class Step> bool Browser::reported(const Step& step) {
    try {
        step();
        return true;
    } catch (const RegError& error) {
        ctx_.trace.write(std::string("--- Registry Browser: ") + error.what());
        RegFehlermeldungen(ctx_, error.number);
    } catch (const NumberedError& error) {
        ctx_.port.tell(error.what(), box::Critical);
    }
    return false;
}

// For the few operations that need the store itself; selects the path as well.
RegStore& Browser::store(const std::string& path) {
    ctx_.objBVKReg.SetPath(machine_, path);
    return ctx_.objBVKReg.selectedStore();
}

std::optional<RawValue> Browser::rawAt(const std::string& key, const std::string& name) {
    ctx_.objBVKReg.SetValuePath(machine_, key, name);
    return ctx_.objBVKReg.ReadRaw();
}

bool Browser::exists(const std::string& key) {
    try {
        const RegPath path = parseRegPath(key + "\\");
        return store(key).keyExists(path.root, path.key);
    } catch (const RegError&) {
        return false;
    }
}

std::vector<std::string> Browser::subKeys(const std::string& key) {
    std::vector<std::string> names;
    reported([&] {
        ctx_.objBVKReg.SetPath(machine_, key);
        names = ctx_.objBVKReg.EnumSubKeys();
    });
    return names;
}

BrowserValue Browser::rowOf(std::string name, std::int32_t type, std::string text) const {
    BrowserValue row;
    row.KeyName = std::move(name);
    row.typ = static_cast<std::uint32_t>(type);
    row.Type = DatenTypText(ctx_, type);
    if (row.Type == strBVKTexte(TextUnknownType)) row.Type += " " + std::to_string(row.typ);
    row.tag = row.typ == regtype::Sz ? BrowserValue::Tag::ASC : row.typ == regtype::Dword ? BrowserValue::Tag::None : BrowserValue::Tag::DATA;
    row.Wert = cut(std::move(text));
    return row;
}

std::vector<BrowserValue> Browser::values(const std::string& key) {
    std::vector<BrowserValue> rows(1);
    rows[0].Type = DatenTypText(ctx_, regtype::Sz);
    rows[0].Wert = messages::ValueNotThere;
    rows[0].typ = regtype::Sz;
    rows[0].there = false;
    const auto add = [&](const std::string& name, std::int32_t type, std::string text) {
        BrowserValue row = rowOf(name, type, std::move(text));
        if (name.empty())
            rows[0] = std::move(row);
        else
            rows.push_back(std::move(row));
    };
    reported([&] {
        ctx_.objBVKReg.SetPath(machine_, key);
        std::int16_t count = 0;
        std::vector<std::string> names, texts;
        std::vector<std::int32_t> types;
        try {
            ctx_.objBVKReg.ListValues(count, names, types, texts);
            for (std::size_t i = 1; i < names.size(); ++i) add(names[i], types[i], std::move(texts[i]));
        } catch (const NumberedError& error) {
            if (error.number != errnum::Overflow) throw;   // more than the operation can count
            for (const NamedValue& entry : ctx_.objBVKReg.ListRaw())
                add(entry.name.text(), static_cast<std::int32_t>(entry.value.type), dataText(entry.value));
        }
    });
    return rows;
}

std::optional<RawValue> Browser::value(const std::string& key, const std::string& name) {
    std::optional<RawValue> found;
    reported([&] {
        const RegPath path = parseRegPath(key + "\\");
        found = store(key).value(path.root, path.key, ValueName::named(name));
    });
    return found;
}

std::string Browser::longKey(const std::string& typed) {
    try {
        const RegPath path = parseRegPath(typed);
        const std::string key = path.wholeKey();
        return longRootName(path.root) + (key.empty() ? key : "\\" + key);
    } catch (const RegError&) {
        return {};
    }
}

// --- changes ---

bool Browser::refuse(std::string text) {
    ctx_.port.tell(std::move(text), box::Exclamation);
    return false;
}

bool Browser::deletingAllowed() { return ctx_.einstellungen.LöschenAktiv || refuse(messages::DeletingNotAllowed); }

bool Browser::usableKeyName(const std::string& name) {
    if (name.empty() || name.find('\\') != std::string::npos) return refuse(messages::KeyNameInvalid);
    try {
        checkKeyName(name);
        return true;
    } catch (const RegError& error) {
        return refuse(error.what());
    }
}

Change Browser::newChange(Change::Art art) const {
    Change change;
    change.art = art;
    change.tipHeading = Titel;
    return change;
}

// A path text could not tell a backslash in a name from one between keys.
ValueChange Browser::valueChange(const std::string& key, const std::string& name, std::optional<RawValue> before, std::optional<RawValue> after) const {
    const bool apart = name.find('\\') != std::string::npos;
    ValueChange change{machine_, apart ? key : childPath(key, name), 0, std::move(before), std::move(after), false};
    if (apart) change.name = name;
    return change;
}

// The record is opened before the first write and closed whatever happens.
template <class Write> bool Browser::recorded(Change& change, const Write& write) {
    recorder_.begin(change);
    const bool done = reported([&] {
        write();
        changed_ = true;
    });
    if (done) {
        for (std::size_t k = 0; k < change.values.size(); ++k) {
            change.values[k].written = true;
            recorder_.written(change, k);
        }
    }
    recorder_.finished(change);
    return done;
}

bool Browser::writeValue(const std::string& key, const std::string& name, const std::optional<RawValue>& before, const RawValue& value) {
    const std::string path = childPath(key, name);
    std::optional<RawValue> present;
    if (!reported([&] { present = rawAt(key, name); })) return false;
    if (present == value) return true;
    if (present != before) {
        if (!before) return refuse(fmt::format(messages::ValueAlreadyThere, path));
        if (!ctx_.port.ask(fmt::format(messages::ValueChangedMeanwhile, path, present ? cut(dataText(*present)) : strBVKTexte(21)), box::Exclamation))
            return false;
    }
    Change change = newChange(Change::Art::Speichern);
    change.values.push_back(valueChange(key, name, present, value));
    return recorded(change, [&] {
        ctx_.objBVKReg.SetValuePath(machine_, key, name);
        ctx_.objBVKReg.WriteRaw(value);
    });
}

bool Browser::renameValue(const std::string& key, const std::string& name, const std::string& to) {
    if (name == to) return true;
    if (to.empty()) return refuse(messages::ValueNameEmpty);
    const bool caseOnly = sameName(name, to);
    const std::string target = childPath(key, to);
    std::optional<RawValue> data, taken;
    if (!reported([&] { data = rawAt(key, name), taken = rawAt(key, to); }) || !data) return false;
    if (taken && !caseOnly) return refuse(fmt::format(messages::ValueAlreadyThere, target));
    Change change = newChange(Change::Art::Speichern);
    if (!caseOnly) change.values.push_back(valueChange(key, name, data, std::nullopt));
    change.values.push_back(valueChange(key, to, taken, data));
    return recorded(change, [&] {
        const RegPath path = parseRegPath(key + "\\");
        RegStore& registry = store(key);
        registry.transaction([&] {
            if (!registry.deleteValue(path.root, path.key, ValueName::named(name))) throw RegError(regerr::NoAccess, "Der Wert kann nicht gelöscht werden.");
            registry.setValue(path.root, path.key, ValueName::named(to), *data);
        });
    });
}

bool Browser::deleteValue(const std::string& key, const std::string& name) {
    if (!deletingAllowed()) return false;
    const std::string path = childPath(key, name);
    std::optional<RawValue> data;
    if (!reported([&] { data = rawAt(key, name); }) || !data) return false;
    if (!ctx_.port.ask(fmt::format(messages::DeleteValueQuestion, name.empty() ? path + messages::StandardWert : path), box::Exclamation)) return false;
    ctx_.click();
    Change change = newChange(Change::Art::Loeschen);
    change.values.push_back(valueChange(key, name, data, std::nullopt));
    return recorded(change, [&] {
        ctx_.objBVKReg.SetValuePath(machine_, key, name);
        if (!ctx_.objBVKReg.DeleteValue()) throw RegError(regerr::NoAccess, "Der Wert kann nicht gelöscht werden.");
    });
}

bool Browser::newKey(const std::string& parent, const std::string& name) {
    if (!usableKeyName(name)) return false;
    const std::string key = childPath(parent, name);
    if (exists(key)) return refuse(fmt::format(messages::KeyAlreadyThere, key));
    Change change = newChange(Change::Art::Key);
    change.key.push_back({machine_, key, {std::string()}, {}});
    change.key[0].created = true;
    return recorded(change, [&] {
        ctx_.objBVKReg.SetPath(machine_, key + "\\");
        ctx_.objBVKReg.WriteValue("", regtype::None);
    });
}

bool Browser::mayRename(const std::string& key) {
    const RegPath path = parseRegPath(key + "\\");
    return !path.key.empty() && !isFixture(path);
}

// Below HKCR the user's keys cover the machine's, which show only when the first are gone.
void Browser::removeTree(const std::string& key) {
    for (int layer = 0; layer < 2 && exists(key); ++layer) {
        std::string path = key;
        DelUnterKey(ctx_, path, true, machine_);
    }
    if (exists(key)) throw RegError(regerr::NoAccess, "Der Schlüssel konnte nicht ganz gelöscht werden.");
}

void Browser::moveTree(const RegPath& from, const std::string& toKey) {
    RegStore& registry = store(longRootName(from.root));
    const std::string root = std::string(longRootName(from.root)) + "\\";
    const auto move = [&](const std::string& source, const std::string& target) {
        if (!copyTree(registry, from.root, source, registry, from.root, target)) throw RegError(regerr::KeyNotRead, "Der Schlüssel ist nicht vorhanden.");
        removeTree(root + source);
    };
    registry.transaction([&] {
        if (!sameName(from.key, toKey)) return move(from.key, toKey);
        std::string between = toKey + "~";   // another case alone needs a name between
        while (registry.keyExists(from.root, between)) between += "~";
        move(from.key, between);
        move(between, toKey);
    });
}

bool Browser::renameKey(const std::string& key, const std::string& to) {
    if (!mayRename(key)) return refuse(fmt::format(messages::KeyBelongsToSystem, key));
    if (!usableKeyName(to)) return false;
    const RegPath from = parseRegPath(key + "\\");
    const std::string above(parentKey(from.key)), toKey = joinKey(above, to);
    if (toKey == from.key) return true;
    const std::string target = std::string(longRootName(from.root)) + "\\" + toKey;
    const bool caseOnly = sameName(from.key, toKey);
    if (!caseOnly && exists(target)) return refuse(fmt::format(messages::KeyAlreadyThere, target));
    Change change = newChange(Change::Art::Key);
    if (!reported([&] { change.key = keyImages(ctx_.objBVKReg, machine_, key); })) return false;
    for (KeyImage& image : change.key) image.geloescht = true;
    if (!caseOnly) {
        change.key.push_back({machine_, target, {std::string()}, {}});
        change.key.back().created = true;
    }
    return recorded(change, [&] { moveTree(from, toKey); });
}

bool Browser::deleteKey(const std::string& key) {
    if (!deletingAllowed()) return false;
    if (!mayRename(key)) return refuse(fmt::format(messages::KeyBelongsToSystem, key));
    if (!exists(key)) return refuse(fmt::format(messages::KeyMissing, key));
    Change change = newChange(Change::Art::Key);
    ctx_.port.waitPointer(true);
    const bool read = reported([&] { change.key = keyImages(ctx_.objBVKReg, machine_, key); });
    ctx_.port.waitPointer(false);
    if (!read) return false;
    std::size_t subKeys = 0, values = 0;
    for (KeyImage& image : change.key) {
        image.geloescht = true;
        subKeys += image.unterschluessel.size() - std::min<std::size_t>(1, image.unterschluessel.size());
        values += image.values.size();
    }
    if (!ctx_.port.ask(fmt::format(messages::DeleteKeyQuestion, key, subKeys, values), box::Exclamation)) return false;
    ctx_.click();
    ctx_.port.waitPointer(true);
    const bool done = recorded(change, [&] { store(key).transaction([&] { removeTree(key); }); });
    ctx_.port.waitPointer(false);
    return done;
}

// --- search, clipboard ---

void Browser::search(const std::string& key, const BrowserSearch& wanted, const std::function<void(BrowserHit)>& hit,
                     const std::function<bool(const std::string& key)>& stop) {
    if (wanted.text.empty()) return;
    reported([&] {
        const RegPath start = parseRegPath(key + "\\");
        const std::string root = longRootName(start.root);
        const auto pattern = makeTextMuster(wanted.text);
        std::string present = key;
        std::size_t hits = 0;
        SearchTarget target;
        target.hit = [&](const Hits& found) {
            BrowserHit entry{found.key.empty() ? root : childPath(root, std::string(found.key)), std::nullopt, {}};
            if (!found.isKey) entry.name = std::string(found.name);
            if (found.value != nullptr) entry.text = cut(dataText(*found.value));
            hit(std::move(entry));
            ++hits;
        };
        target.enter = [&](std::string_view path) { present = path.empty() ? root : childPath(root, std::string(path)); };
        target.stop = [&] { return hits >= MostHits || stop(present); };
        std::optional<RegError> trouble;   // told when the rest has been searched
        target.unreadable = [&](std::string_view, const RegError& why) { trouble = trouble.value_or(why); };
        suchen(store(key), start.root, start.key, *pattern, {wanted.keys, wanted.names, wanted.data, {}}, target);
        if (trouble) throw RegError(*trouble);
    });
}

void Browser::copyPath(const std::string& key, const std::optional<std::string>& name) {
    ctx_.port.setClipboard(name ? childPath(key, *name) : key);
}

}  // namespace

std::unique_ptr<RegBrowser> makeRegBrowser(Context& ctx, ChangeRecorder& recorder) { return std::make_unique<Browser>(ctx, recorder); }

}  // namespace brenvik
