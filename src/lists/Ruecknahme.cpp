#include "lists/Ruecknahme.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>

#include "frame/DateiSystem.h"
#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "frame/ZeilenAbgleich.h"
#include "lists/Meldungen.h"
#include "registry/RegTree.h"
#include "registry/Suche.h"
#include "registry/ValueOperations.h"
#include "tipengine/Schluesselbild.h"

namespace brenvik {
namespace {

constexpr std::uint32_t LocalMachineRoot = 0x80000002;
constexpr std::size_t MostShown = 120, MostLines = 10;
constexpr std::uintmax_t MostFile = 16u << 20;

std::string oneLine(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20) c = c == '\0' ? '|' : ' ';
    if (text.size() <= MostShown) return text;
    std::size_t end = MostShown;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;   // never inside a character
    return text.substr(0, end) + "…";
}

std::string shownKey(const SchluesselBild& image) {
    if (image.unterschluessel.empty()) return meldung::NichtVorhanden;
    return fmt::format("Schlüssel mit {} Unterschlüsseln und {} Werten", image.unterschluessel.size() - 1, image.werte.size());
}

std::string shownFile(const std::optional<std::string>& bytes) {
    return bytes ? fmt::format("Datei mit {} Bytes", bytes->size()) : std::string(meldung::NichtVorhanden);
}

// What is in the image beside its details: keys and values, in no order.
std::set<std::string> contentOf(const SchluesselBild& image) {
    std::set<std::string> content;
    for (const auto& key : image.unterschluessel) content.insert("K" + lowerCase(key));
    for (const auto& [unter, wert] : image.werte)
        content.insert("V" + lowerCase(unter) + "\n" + lowerCase(wert.name.text()) + "\n" + std::to_string(wert.value.type) + "\n" + bytesText(wert.value.bytes));
    return content;
}

std::optional<std::string> fileNow(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return std::nullopt;
    return readFile(file, MostFile);
}

void putFile(const std::filesystem::path& file, const std::optional<std::string>& bytes) {
    if (bytes) return writeFileAtomic(file, *bytes);
    std::error_code error;
    std::filesystem::remove(file, error);
    if (error) throw NumberedError(errnum::PathFileAccess, fmt::format("Die Datei \"{}\" kann nicht gelöscht werden.", utf8FromPath(file)));
}

}  // namespace

struct Ruecknahme::Plan {
    struct Wert {
        WertAenderung change;      // as the change has it, for the record: alt is now, neu is what is to stand
        Fundort place;
    };
    struct Schluessel {
        SchluesselBild now, target;
        Fundort place;
    };
    struct Datei {
        std::string file;
        std::optional<std::string> now, target;
    };
    std::vector<Wert> werte;
    std::vector<Schluessel> schluessel;
    std::vector<Datei> dateien;
    std::vector<std::string> conflicts;
    bool empty() const { return werte.empty() && schluessel.empty() && dateien.empty(); }
};

// --- where, and how it is shown ---

std::string machineOf(const JournalKopf& change) { return change.rechner.empty() ? change.lokalerRechner : change.rechner; }

bool madeHere(const FrameContext& ctx, const JournalKopf& change) {
    const std::string machine = machineOf(change);
    return machine.empty() || equalText(machine, ctx.strLokalerRechner);
}

Fundort placeNow(const FrameContext& ctx, const JournalKopf& change, const std::string& path) {
    const bool here = madeHere(ctx, change);
    Fundort place{here ? std::string() : machineOf(change), path};
    const auto cut = path.find('\\');
    const bool own = here && (change.sid.empty() || equalText(change.sid, ctx.strEigeneSID));
    if (cut != std::string::npos && rootByName(path.substr(0, cut)) == Root::CurrentUser && !own && !change.sid.empty())
        place.path = "HKEY_USERS\\" + change.sid + path.substr(cut);
    return place;
}

std::string shownRaw(const std::optional<RawValue>& value) {
    if (!value) return meldung::NichtVorhanden;
    static constexpr const char* Names[] = {"REG_NONE", "REG_SZ", "REG_EXPAND_SZ", "REG_BINARY", "REG_DWORD", "REG_DWORD_BIG_ENDIAN", "REG_LINK", "REG_MULTI_SZ"};
    const std::string type = value->type < std::size(Names) ? Names[value->type] : "Typ " + std::to_string(value->type);
    return type + " \"" + oneLine(dataText(*value)) + "\"";
}

JournalKopf newHead(Context& ctx, Aenderung::Art art) {
    const DateTime now = ctx.port.now();
    JournalKopf head;
    head.zeit = fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", now.year, now.month, now.day, now.hour, now.minute, now.second);
    head.rechner = ctx.strRechnername;
    head.lokalerRechner = ctx.strLokalerRechner;
    head.benutzer = ctx.strUserName;
    head.sid = ctx.strEigeneSID;
    head.art = art;
    return head;
}

RegStore& Ruecknahme::storeAt(const Fundort& place) {
    ctx_.objBVKReg.SetPath(place.machine, place.path);
    return ctx_.objBVKReg.selectedStore();
}

std::optional<RawValue> Ruecknahme::readAt(const Fundort& place) {
    ctx_.objBVKReg.SetPath(place.machine, place.path);
    return ctx_.objBVKReg.ReadRaw();
}

bool Ruecknahme::refuse(const char* why) {
    ctx_.port.tell(why, box::Exclamation);
    return false;
}

// --- deciding ---

void Ruecknahme::planValues(const JournalEintrag& change, Plan& plan) {
    std::map<std::string, WertAenderung> byPath;   // of several writes to one path the first tells what was, the last what came
    for (const WertAenderung& value : change.aenderung.werte) {
        const auto [known, fresh] = byPath.emplace(lowerCase(value.path), value);
        if (fresh) continue;
        known->second.neu = value.neu;
        known->second.geschrieben = known->second.geschrieben || value.geschrieben;
    }
    for (const auto& [name, value] : byPath) {
        const Fundort place = placeNow(ctx_, change, value.path);
        const auto now = readAt(place);
        if (now == value.alt) continue;
        if (now != value.neu) {
            if (!value.geschrieben) continue;   // never was ours
            plan.conflicts.push_back(fmt::format(meldung::GenauZeile, place.path, shownRaw(value.alt), shownRaw(value.neu), shownRaw(now)));
        }
        plan.werte.push_back({{change.rechner, value.path, value.TippIndex, now, value.alt, false}, place});
    }
}

void Ruecknahme::planKeys(const JournalEintrag& change, Plan& plan) {
    const std::optional<JournalEintrag> undone = change.hebtAuf != 0 ? journal_.entry(change.hebtAuf) : std::nullopt;
    const auto& images = change.aenderung.schluessel;
    const auto absent = [](const SchluesselBild& image) { return SchluesselBild{image.machine, image.path, {}, {}}; };
    for (std::size_t k = 0; k < images.size(); ++k) {
        if (!images[k].geloescht && !images[k].angelegt && !undone) continue;   // kept for looking only: its values are recorded one by one
        const SchluesselBild before = images[k].angelegt ? absent(images[k]) : images[k];
        const Fundort place = placeNow(ctx_, change, before.path);
        SchluesselBild now = schluesselBild(ctx_.objBVKReg, place.machine, place.path);
        now.path = before.path;
        const auto is = contentOf(now), was = contentOf(before);
        if (is == was) continue;
        SchluesselBild after = absent(before);
        if (undone && k < undone->aenderung.schluessel.size()) {
            if (!undone->aenderung.schluessel[k].angelegt) after = undone->aenderung.schluessel[k];
        } else if (images[k].angelegt) {   // made empty, or filled with what another key held: the key has another name now
            const auto moved = std::find_if(images.begin(), images.end(), [](const SchluesselBild& image) { return image.geloescht; });
            after = moved != images.end() ? *moved : images[k];
        }
        // What is left of a key that was deleted in part is no work of somebody else.
        const bool rest = std::includes(was.begin(), was.end(), is.begin(), is.end());
        if (is != contentOf(after) && !rest) plan.conflicts.push_back(fmt::format(meldung::GenauZeile, place.path, shownKey(before), shownKey(after), shownKey(now)));
        plan.schluessel.push_back({std::move(now), before, place});
    }
}

void Ruecknahme::planFiles(const JournalEintrag& change, Plan& plan) {
    for (const DateiBild& file : change.aenderung.dateien) {
        const std::optional<std::string> target = file.vorhanden ? std::optional(file.inhalt) : std::nullopt;
        const auto now = fileNow(pathFromUtf8(file.datei));
        if (now == target) continue;
        if (now != file.neu) {
            if (!file.geschrieben) continue;
            std::string lines = fmt::format(meldung::GenauZeile, file.datei, shownFile(target), shownFile(file.neu), shownFile(now));
            if (now) {
                const auto texts = [](const std::string& bytes) { return Split(Replace(bytes, "\r\n", "\n"), "\n"); };
                const auto then = texts(file.neu), present = texts(*now);
                std::size_t shown = 0;
                for (const LineChange& run : lineChanges({then.begin(), then.end()}, present))
                    for (std::size_t k = run.newFirst; k < run.newLast && shown < MostLines; ++k, ++shown) lines += "   + " + oneLine(present[k]) + "\r\n";
            }
            plan.conflicts.push_back(std::move(lines));
        }
        plan.dateien.push_back({file.datei, now, target});
    }
}

// --- doing ---

void Ruecknahme::writeRegistry(const JournalEintrag& change, const Plan& plan) {
    if (plan.werte.empty() && plan.schluessel.empty()) return;
    RegStore& store = storeAt(plan.werte.empty() ? plan.schluessel[0].place : plan.werte[0].place);
    store.transaction([&] {
        for (const auto& key : plan.schluessel) {
            const RegPath place = parseRegPath(key.place.path + "\\");
            if (!key.target.unterschluessel.empty()) {
                replaceTree(store, place.root, place.wholeKey(), [&](TreeSink& sink) { tellImage(key.target, sink); });
            } else {
                store.clear(place.root, place.wholeKey());
                store.deleteKey(place.root, place.wholeKey());
            }
        }
        for (const auto& value : plan.werte) {
            ctx_.objBVKReg.SetPath(value.place.machine, value.place.path);
            value.change.neu ? ctx_.objBVKReg.WriteRaw(*value.change.neu) : void(ctx_.objBVKReg.DeleteValue());
            if (ctx_.objBVKReg.ReadRaw() != value.change.neu) throw RegError(regerr::NoAssignment, value.place.path);
        }
        removeEmptyKeys(change, plan);
    });
}

// Keys that the change made on its way go again, as far as they are empty now.
void Ruecknahme::removeEmptyKeys(const JournalEintrag& change, const Plan& plan) {
    for (const std::string& top : change.neueSchluessel) {
        const Fundort topPlace = placeNow(ctx_, change, top);
        const RegPath topKey = parseRegPath(topPlace.path + "\\");
        const auto madeByIt = [&](const RegPath& place, const std::string& key) {
            return place.root == topKey.root && equalText((key + "\\").substr(0, topKey.key.size() + 1), topKey.key + "\\");
        };
        RegStore& store = storeAt(topPlace);
        for (auto value = plan.werte.rbegin(); value != plan.werte.rend(); ++value) {
            const RegPath place = parseRegPath(value->place.path);
            std::string key = place.key;
            while (madeByIt(place, key)) {
                if (store.keyExists(place.root, key)) {
                    if (!store.values(place.root, key).empty() || !store.subKeys(place.root, key).empty()) break;
                    store.deleteKey(place.root, key);
                }
                const auto cut = key.rfind('\\');
                if (cut == std::string::npos) break;
                key.resize(cut);
            }
        }
    }
}

void Ruecknahme::perform(const JournalEintrag& change, Plan& plan) {
    std::vector<const Plan::Datei*> done;
    std::set<std::string> unprotected;
    const auto write = [&](const std::string& name, const std::optional<std::string>& bytes) {
        const auto file = pathFromUtf8(name);
        if (isReadOnly(file)) {
            if (!ctx_.port.ask(fmt::format(meldung::DateiSchreibschutz, name))) throw NumberedError(errnum::PathFileAccess, "Die Datei \"" + name + "\" ist schreibgeschützt.");
            setReadOnly(file, false);
            unprotected.insert(name);
        }
        putFile(file, bytes);
    };
    std::string failure, notBack;
    try {
        for (const auto& file : plan.dateien) {
            write(file.file, file.target);
            done.push_back(&file);
        }
        writeRegistry(change, plan);
    } catch (const std::exception& error) {
        failure = *error.what() != '\0' ? error.what() : "Fehler " + std::to_string(errorNumberOf(error));
        for (const auto* file : done) {
            try {
                putFile(pathFromUtf8(file->file), file->now);
            } catch (const std::exception&) {
                notBack += file->file + "\r\n";
            }
        }
    }
    for (const std::string& name : unprotected) {
        std::error_code error;
        if (std::filesystem::exists(pathFromUtf8(name), error)) setReadOnly(pathFromUtf8(name), true);
    }
    if (failure.empty()) return;
    throw NumberedError(errnum::Internal, notBack.empty() ? fmt::format(meldung::GenauGescheitert, failure) : fmt::format(meldung::GenauHalbGescheitert, failure, notBack));
}

bool Ruecknahme::restore(const JournalEintrag& change, Aenderung::Art art, std::int64_t& recorded, bool& nothingToDo) {
    if (!madeHere(ctx_, change) && ctx_.objBVKReg.ConnectRemote(machineOf(change), LocalMachineRoot) != 0)
        return refuse(fmt::format(meldung::RechnerNichtErreichbar, machineOf(change)).c_str());
    Plan plan;
    planValues(change, plan);
    planKeys(change, plan);
    planFiles(change, plan);
    if (!plan.conflicts.empty()) {
        std::string shown;
        for (std::size_t k = 0; k < plan.conflicts.size() && k < MostLines; ++k) shown += plan.conflicts[k];
        if (plan.conflicts.size() > MostLines) shown += fmt::format(meldung::GenauWeitere, plan.conflicts.size() - MostLines);
        if (!ctx_.port.ask(fmt::format(meldung::GenauKonflikt, shown), box::Exclamation + box::DefaultNo)) return false;
    }
    nothingToDo = plan.empty();

    JournalEintrag record;
    static_cast<JournalKopf&>(record) = newHead(ctx_, art);
    record.rechner = change.rechner, record.lokalerRechner = change.lokalerRechner, record.sid = change.sid;
    record.tipp = change.tipp, record.überschrift = change.überschrift, record.hebtAuf = change.nummer;
    for (const auto& value : plan.werte) record.aenderung.werte.push_back(value.change);
    // One image for each of the change's, so that both can be told by their place.
    for (const SchluesselBild& image : change.aenderung.schluessel) {
        const auto planned = std::find_if(plan.schluessel.begin(), plan.schluessel.end(), [&](const auto& key) { return key.target.path == image.path; });
        record.aenderung.schluessel.push_back(planned != plan.schluessel.end() ? planned->now : image);
        record.aenderung.schluessel.back().geloescht = false;   // what it says is all there is to bring back
    }
    for (const auto& file : plan.dateien)
        record.aenderung.dateien.push_back({file.file, file.now.value_or(std::string()), file.now.has_value(), file.target.value_or(std::string()), false});
    recorded = journal_.add(record);
    try {
        perform(change, plan);
    } catch (const NumberedError&) {
        journal_.remove(recorded);
        throw;
    }
    for (WertAenderung& value : record.aenderung.werte) value.geschrieben = true;
    for (DateiBild& file : record.aenderung.dateien) file.geschrieben = true;
    journal_.finish(recorded, record.aenderung);
    if (!nothingToDo) ctx_.platform.sendSettingChange(0, 2, 10000);
    return true;
}

bool Ruecknahme::zuruecksetzen(std::int64_t nummer, bool tell) {
    try {
        const auto change = journal_.entry(nummer);
        if (!change) return refuse(fmt::format(meldung::KeinSolcherEintrag, nummer).c_str());
        if (change->aufgehobenDurch != 0) return refuse(meldung::SchonZurueck);
        if (change->nurZeile) return refuse(meldung::NichtImJournal);
        std::int64_t recorded = 0;
        bool nothing = false;
        if (!restore(*change, Aenderung::Art::Zuruecksetzen, recorded, nothing)) return false;
        journal_.takenBack(nummer, recorded);
        if (tell) ctx_.port.tell(nothing ? meldung::GenauSchonSo : meldung::GenauFertig);
        return true;
    } catch (const std::exception& error) {
        return refuse(error.what());
    }
}

bool Ruecknahme::wiederherstellen(std::int64_t nummer) {
    try {
        const auto change = journal_.head(nummer);
        if (!change) return refuse(fmt::format(meldung::KeinSolcherEintrag, nummer).c_str());
        const auto undo = change->aufgehobenDurch != 0 ? journal_.entry(change->aufgehobenDurch) : std::nullopt;
        if (!undo) return refuse(meldung::NichtZurueck);
        std::int64_t recorded = 0;
        bool nothing = false;
        if (!restore(*undo, Aenderung::Art::Wiederherstellen, recorded, nothing)) return false;
        journal_.takenBack(undo->nummer, recorded);
        journal_.takenBack(nummer, 0);
        if (change->zeile) history_.putBack(*change->zeile);
        ctx_.port.tell(meldung::RedoFertig);
        return true;
    } catch (const std::exception& error) {
        return refuse(error.what());
    }
}

}  // namespace brenvik
