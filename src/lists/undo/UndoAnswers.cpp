#include "lists/undo/UndoAnswers.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>

#include "frame/Reports.h"
#include "frame/platform/HostFile.h"
#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"
#include "frame/text/LineMerge.h"
#include "frame/text/ShownText.h"
#include "lists/ListWindows.h"
#include "lists/Messages.h"
#include "lists/undo/ChangedFiles.h"
#include "lists/undo/Drift.h"
#include "lists/undo/PriorState.h"
#include "registry/search/Search.h"
#include "registry/store/RegLinks.h"
#include "registry/store/RegTree.h"
#include "tipengine/values/KeyImage.h"

namespace brenvik {
namespace {

constexpr std::uint32_t LocalMachineRoot = 0x80000002;
constexpr std::size_t MostShown = 120, MostLines = 10;

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
    for (const auto& key : image.unterschluessel) content.insert("K" + key);
    for (const auto& [unter, wert] : image.werte)
        content.insert("V" + unter + "\n" + wert.name.text() + "\n" + std::to_string(wert.value.type) + "\n" + bytesText(wert.value.bytes));
    return content;
}

// The lines that somebody put into the file since.
std::string newLines(const std::string& then, const std::string& now) {
    const auto texts = [](const std::string& bytes) { return Split(Replace(bytes, "\r\n", "\n"), "\n"); };
    const auto before = texts(then), present = texts(now);
    std::string lines;
    std::size_t shown = 0;
    for (const LineChange& run : lineChanges({before.begin(), before.end()}, present))
        for (std::size_t k = run.newFirst; k < run.newLast && shown < MostLines; ++k, ++shown) lines += "\r\n   + " + shownLine(utf8FromAnsi(present[k]), MostShown);
    return lines;
}

SchluesselBild absent(const SchluesselBild& image) { return {image.machine, image.path, {}, {}}; }

// What a change did to a key, or was to do.
bool changedKey(const JournalEintrag& change, std::size_t k) {
    const SchluesselBild& image = change.aenderung.schluessel[k];
    return image.geloescht || image.angelegt || isUndo(change);   // others are kept for looking only: their values are recorded one by one
}
SchluesselBild before(const SchluesselBild& image) { return image.angelegt ? absent(image) : image; }

}  // namespace

struct Ruecknahme::Plan {
    struct Wert {
        RegAddress place;
        std::int16_t tipp = 0;
        std::optional<RawValue> now, target;
    };
    struct Schluessel {
        RegAddress place;
        SchluesselBild now, target;
    };
    struct Datei {
        std::string file;
        std::optional<std::string> now, target;
    };
    struct Konflikt {
        UndoConflictsRequest::Row row;
        std::string id;                        // of the place
        std::size_t werte = None, schluessel = None, dateien = None;   // which of the lists below
        std::optional<RawValue> now;           // of a value
    };
    static constexpr std::size_t None = static_cast<std::size_t>(-1);
    std::string machine;
    std::vector<Wert> werte;
    std::vector<Schluessel> schluessel;
    std::vector<Datei> dateien;
    std::vector<Konflikt> conflicts;
    std::vector<RegAddress> gone;              // places of values that are not there, and need not be deleted
    std::size_t kept = 0;
    bool empty() const { return werte.empty() && schluessel.empty() && dateien.empty(); }
};

// --- where, and how it is shown ---

std::string machineOf(const JournalKopf& change) { return change.rechner.empty() ? change.lokalerRechner : change.rechner; }

std::string shownRaw(const std::optional<RawValue>& value) {
    if (!value) return meldung::NichtVorhanden;
    static constexpr const char* Names[] = {"REG_NONE", "REG_SZ", "REG_EXPAND_SZ", "REG_BINARY", "REG_DWORD", "REG_DWORD_BIG_ENDIAN", "REG_LINK", "REG_MULTI_SZ"};
    const std::string type = value->type < std::size(Names) ? Names[value->type] : "Typ " + std::to_string(value->type);
    return type + " \"" + shownLine(dataText(*value), MostShown) + "\"";
}

JournalKopf newHead(Context& ctx, Aenderung::Art art) {
    const DateTime now = ctx.port.now();
    JournalKopf head;
    head.zeit = fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", now.year, now.month, now.day, now.hour, now.minute, now.second);
    head.rechner = machineMark(ctx, ctx.strRechnername);
    head.lokalerRechner = ctx.strLokalerRechner;
    head.benutzer = ctx.strUserName;
    head.sid = ctx.strEigeneSID;
    head.art = art;
    return head;
}

bool Ruecknahme::refuse(const char* why) {
    ctx_.port.tell(why, box::Exclamation);
    return false;
}

bool Ruecknahme::mayWorkOn(const std::string& machine) {
    if (atHand(ctx_, machine)) return true;
    if (!ctx_.port.ask(isFolder(machine) ? fmt::format(meldung::AndererOrdner, machine) : fmt::format(meldung::AndererRechner, machine), box::Exclamation + box::DefaultNo)) return false;
    return ctx_.objBVKReg.ConnectRemote(machine, LocalMachineRoot) == 0 || refuse(fmt::format(meldung::RechnerNichtErreichbar, machine).c_str());
}

// --- deciding ---

// Of several writes to one place the first tells what was, the last what came. Values that came out as they were are none
// of the change.
void Ruecknahme::planValues(const JournalEintrag& change, const PriorState& prior, Plan& plan) {
    std::map<std::string, std::pair<RegAddress, WertAenderung>> byPlace;
    for (const WertAenderung& value : change.aenderung.werte) {
        RegAddress place = addressOf(ctx_, change, value);
        std::string id = place.id();
        const auto [known, fresh] = byPlace.try_emplace(std::move(id), std::move(place), value);
        if (fresh) continue;
        known->second.second.neu = value.neu;
        known->second.second.geschrieben = known->second.second.geschrieben || value.geschrieben;
    }
    for (const auto& [id, found] : byPlace) {
        const auto& [place, value] = found;
        if (value.alt == value.neu) continue;
        const auto now = storeOf(ctx_, place.machine).value(place.root, place.key, *place.name);
        const auto target = prior.value(place, value.alt);
        if (now == target) {
            if (!now) plan.gone.push_back(place);
            continue;
        }
        if (now != value.neu) {
            if (!value.geschrieben) continue;   // never was ours
            plan.conflicts.push_back({{shownPath(ctx_, place), shownRaw(target), shownRaw(value.neu), shownRaw(now)}, id, plan.werte.size(), Plan::None, Plan::None, now});
        }
        plan.werte.push_back({place, value.TippIndex, now, target});
    }
}

void Ruecknahme::planKeys(const JournalEintrag& change, const PriorState& prior, Plan& plan) {
    const auto& images = change.aenderung.schluessel;
    for (std::size_t k = 0; k < images.size(); ++k) {
        if (!changedKey(change, k)) continue;
        SchluesselBild target = before(images[k]);
        const RegAddress place = addressOf(ctx_, change, target.path);
        std::vector<RegAddress> gone = prior.correct(place, target);
        SchluesselBild now = schluesselBild(storeOf(ctx_, place.machine), place.machine, {place.root, place.key});
        const auto is = contentOf(now), was = contentOf(target);
        if (is == was) continue;
        const bool known = k < change.nachher.size() && change.nachher[k];
        const SchluesselBild after = known ? *change.nachher[k] : images[k].angelegt ? images[k] : absent(images[k]);
        // What is left of a key that was deleted in part is no work of somebody else.
        const bool rest = !known && std::includes(was.begin(), was.end(), is.begin(), is.end());
        if (is != contentOf(after) && !rest)
            plan.conflicts.push_back({{shownPath(ctx_, place), shownKey(target), shownKey(after), shownKey(now)}, place.id(), Plan::None, plan.schluessel.size(), Plan::None, {}});
        plan.schluessel.push_back({place, std::move(now), std::move(target)});
        plan.gone.insert(plan.gone.end(), gone.begin(), gone.end());
    }
}

void Ruecknahme::planFiles(const JournalEintrag& change, const PriorState& prior, Plan& plan) {
    for (const DateiBild& file : change.aenderung.dateien) {
        const std::optional<std::string> target = prior.file(file.datei, file.vorhanden ? std::optional(file.inhalt) : std::nullopt);
        const auto now = ChangedFile(ctx_, plan.machine, file.datei).read();
        if (now == target) continue;
        if (now.value_or(std::string()) != file.neu) {
            if (!file.geschrieben) continue;
            plan.conflicts.push_back({{file.datei, shownFile(target), shownFile(file.neu), shownFile(now) + (now ? newLines(file.neu, *now) : std::string())}, lowerCase(file.datei),
                                      Plan::None, Plan::None, plan.dateien.size(), {}});
        }
        plan.dateien.push_back({file.datei, now, target});
    }
}

// Says of each conflict who made it, as far as that is known, and takes out of the plan what is to stay.
bool Ruecknahme::settleConflicts(const JournalEintrag& change, Plan& plan) {
    if (plan.conflicts.empty()) return true;
    std::map<std::string, std::string> ours;   // by place
    const auto tell = [](const JournalKopf& step) { return fmt::format(meldung::EigeneAenderung, step.nummer, step.zeit, shownLine(step.überschrift, MostShown)); };
    journal_.eachStep([&](JournalSchritt& step) {
        if (step.nummer <= change.nummer) return;
        for (const auto& conflict : plan.conflicts) {
            const auto lies = [&](const RegAddress& place) { return conflict.schluessel != Plan::None ? place.isBelow(conflict.id) : place.id() == conflict.id; };
            for (const WertAenderung& value : step.werte)
                if (conflict.dateien == Plan::None && lies(addressOf(ctx_, step, value))) {
                    const bool stands = conflict.schluessel != Plan::None || value.neu == conflict.now;
                    if (stands) ours[conflict.id] = tell(step);
                    else ours.erase(conflict.id);
                }
            for (const SchluesselBild& key : step.schluessel)
                if (conflict.dateien == Plan::None && (lies(addressOf(ctx_, step, key.path)) || addressOf(ctx_, step, key.path).id() == conflict.id)) ours[conflict.id] = tell(step);
            for (const DateiBild& file : step.dateien)
                if (conflict.dateien != Plan::None && lowerCase(file.datei) == conflict.id && file.neu == plan.dateien[conflict.dateien].now) ours[conflict.id] = tell(step);
        }
    });
    UndoConflictsRequest request;
    for (auto& conflict : plan.conflicts) {
        const auto own = ours.find(conflict.id);
        conflict.row.by = own != ours.end() ? own->second : meldung::VonAnderen;
        request.rows.push_back(conflict.row);
    }
    ctx_.port.showWindow(request);
    if (!request.proceed) return false;
    for (std::size_t k = plan.conflicts.size(); k-- > 0;) {   // from the end, for the places to stay right
        if (request.rows[k].restore) continue;
        const auto& conflict = plan.conflicts[k];
        const auto erase = [](auto& list, std::size_t place) { list.erase(list.begin() + static_cast<std::ptrdiff_t>(place)); };
        if (conflict.werte != Plan::None) erase(plan.werte, conflict.werte);
        if (conflict.schluessel != Plan::None) erase(plan.schluessel, conflict.schluessel);
        if (conflict.dateien != Plan::None) erase(plan.dateien, conflict.dateien);
        ++plan.kept;
    }
    return true;
}

// --- doing ---

void Ruecknahme::writeRegistry(const JournalEintrag& change, const Plan& plan) {
    if (plan.werte.empty() && plan.schluessel.empty() && plan.gone.empty()) return;
    RegStore& store = storeOf(ctx_, plan.machine);
    store.transaction([&] {
        for (const auto& [place, now, target] : plan.schluessel) {
            if (!target.unterschluessel.empty()) {
                replaceTree(store, place.root, place.key, [&](TreeSink& sink) { tellImage(target, sink); });
            } else {
                store.clear(place.root, place.key);
                store.deleteKey(place.root, place.key);
            }
        }
        std::vector<RegAddress> places;
        for (const auto& value : plan.werte) {
            const RegAddress& place = value.place;
            value.target ? store.setValue(place.root, place.key, *place.name, *value.target) : void(store.deleteValue(place.root, place.key, *place.name));
            if (store.value(place.root, place.key, *place.name) != value.target) throw RegError(regerr::NoAssignment, shownPath(ctx_, place));
            places.push_back(place);
        }
        places.insert(places.end(), plan.gone.begin(), plan.gone.end());
        removeEmptyKeys(change, places);
    });
}

void Ruecknahme::removeEmptyKeys(const JournalEintrag& change, const std::vector<RegAddress>& values) {
    if (values.empty()) return;
    std::vector<std::string> made;   // by ids
    for (const std::string& path : change.neueSchluessel) made.push_back(addressOf(ctx_, change, path).id());
    for (const auto& [head, path] : journal_.keysOfUndone())
        if (sameMachine(markOf(ctx_, head), values.front().machine)) made.push_back(addressOf(ctx_, head, path).id());
    const auto madeByUs = [&](const RegAddress& key) { return std::any_of(made.begin(), made.end(), [&](const std::string& top) { return key.id() == top || key.isBelow(top); }); };
    RegStore& store = storeOf(ctx_, values.front().machine);
    for (auto value = values.rbegin(); value != values.rend(); ++value) {
        for (RegAddress key{value->machine, value->root, value->key, std::nullopt}; !key.key.empty() && madeByUs(key); key.key = std::string(parentKey(key.key))) {
            if (!store.keyExists(key.root, key.key)) continue;
            if (!store.values(key.root, key.key).empty() || !store.subKeys(key.root, key.key).empty()) break;
            store.deleteKey(key.root, key.key);
        }
    }
}

void Ruecknahme::perform(const JournalEintrag& change, const Plan& plan) {
    std::vector<const Plan::Datei*> done;
    std::set<std::string> unprotected;
    const auto write = [&](const std::string& name, const std::optional<std::string>& bytes) {
        const ChangedFile file(ctx_, plan.machine, name);
        if (file.isProtected()) {
            if (!ctx_.port.ask(fmt::format(meldung::DateiSchreibschutz, name))) throw NumberedError(errnum::PathFileAccess, "Die Datei \"" + name + "\" ist schreibgeschützt.");
            file.setProtected(false);
            unprotected.insert(name);
        }
        file.put(bytes);
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
                ChangedFile(ctx_, plan.machine, file->file).put(file->now);
            } catch (const std::exception&) {
                notBack += file->file + "\r\n";
            }
        }
    }
    for (const std::string& name : unprotected) ChangedFile(ctx_, plan.machine, name).setProtected(true);
    if (failure.empty()) return;
    throw NumberedError(errnum::Internal, notBack.empty() ? fmt::format(meldung::GenauGescheitert, failure) : fmt::format(meldung::GenauHalbGescheitert, failure, notBack));
}

JournalEintrag Ruecknahme::recordOf(const JournalEintrag& change, Aenderung::Art art, const Plan& plan) {
    JournalEintrag record;
    static_cast<JournalKopf&>(record) = newHead(ctx_, art);
    record.rechner = plan.machine;
    record.tipp = change.tipp, record.überschrift = change.überschrift, record.hebtAuf = change.nummer;
    Aenderung& done = record.aenderung;
    for (const auto& value : plan.werte) done.werte.push_back({plan.machine, value.place.keyPath(), value.tipp, value.now, value.target, false, value.place.name->text()});
    for (const auto& key : plan.schluessel) {
        done.schluessel.push_back(key.now);
        record.nachher.emplace_back(key.target);
    }
    for (const auto& file : plan.dateien) done.dateien.push_back({file.file, file.now.value_or(std::string()), file.now.has_value(), file.target.value_or(std::string()), false});
    return record;
}

Ruecknahme::Ausgang Ruecknahme::restore(const JournalEintrag& change, Aenderung::Art art, const std::function<void(std::int64_t)>& mark, std::size_t& kept) {
    Plan plan;
    plan.machine = markOf(ctx_, change);
    if (!mayWorkOn(plan.machine)) return Ausgang::Declined;
    const PriorState prior(ctx_, journal_, change);
    planValues(change, prior, plan);
    planKeys(change, prior, plan);
    planFiles(change, prior, plan);
    if (!settleConflicts(change, plan)) return Ausgang::Declined;
    kept = plan.kept;
    if (plan.empty() && kept > 0) return Ausgang::AllKept;   // nothing is taken back, and so the change stands as before
    JournalEintrag record = recordOf(change, art, plan);
    const std::int64_t recorded = journal_.add(record);
    try {
        perform(change, plan);
    } catch (const NumberedError&) {
        journal_.remove(recorded);
        throw;
    }
    for (WertAenderung& value : record.aenderung.werte) value.geschrieben = true;
    for (DateiBild& file : record.aenderung.dateien) file.geschrieben = true;
    journal_.transaction([&] {
        journal_.finish(recorded, record);
        mark(recorded);
    });
    if (plan.empty()) return Ausgang::Nothing;
    ctx_.platform.sendSettingChange(0, 2, 10000);
    return Ausgang::Done;
}

bool Ruecknahme::zuruecksetzen(std::int64_t nummer, bool tell) {
    const host::FolderLock turn(ctx_.heimPfad, PatienceForOthers);   // each takes back on what the one before it has left
    if (turn.error() == std::errc::timed_out) return refuse(meldung::AndererSetztZurueck);
    try {
        const auto change = journal_.entry(nummer);
        if (!change) return refuse(fmt::format(meldung::KeinSolcherEintrag, nummer).c_str());
        if (change->aufgehobenDurch != 0) return refuse(meldung::SchonZurueck);
        if (change->nurZeile) return refuse(meldung::NichtImJournal);
        std::size_t kept = 0;
        const Ausgang result = restore(*change, Aenderung::Art::Zuruecksetzen, [&](std::int64_t recorded) { journal_.takenBack(nummer, recorded); }, kept);
        if (result == Ausgang::Declined) return false;
        if (result == Ausgang::AllKept) return refuse(meldung::AllesBleibt);
        if (tell) ctx_.port.tell(kept > 0 ? fmt::format(meldung::GenauBisAuf, kept) : result == Ausgang::Nothing ? meldung::GenauSchonSo : meldung::GenauFertig);
        return true;
    } catch (const std::exception& error) {
        return refuse(error.what());
    }
}

bool Ruecknahme::wiederherstellen(std::int64_t nummer) {
    const host::FolderLock turn(ctx_.heimPfad, PatienceForOthers);
    if (turn.error() == std::errc::timed_out) return refuse(meldung::AndererSetztZurueck);
    try {
        const auto change = journal_.head(nummer);
        if (!change) return refuse(fmt::format(meldung::KeinSolcherEintrag, nummer).c_str());
        const auto undo = change->aufgehobenDurch != 0 ? journal_.entry(change->aufgehobenDurch) : std::nullopt;
        if (!undo) return refuse(meldung::NichtZurueck);
        std::size_t kept = 0;
        const Ausgang result = restore(*undo, Aenderung::Art::Wiederherstellen, [&](std::int64_t recorded) {
            journal_.takenBack(undo->nummer, recorded);
            journal_.takenBack(nummer, 0);
        }, kept);
        if (result == Ausgang::Declined) return false;
        if (result == Ausgang::AllKept) return refuse(meldung::AllesBleibt);
        if (change->zeile) history_.putBack(*change->zeile);
        ctx_.port.tell(kept > 0 ? fmt::format(meldung::RedoBisAuf, kept) : result == Ausgang::Nothing ? meldung::RedoNichts : meldung::RedoFertig);
        return true;
    } catch (const std::exception& error) {
        return refuse(error.what());
    }
}

bool Ruecknahme::isDone(const JournalEintrag& undo) {
    const std::string machine = markOf(ctx_, undo);
    if (!atHand(ctx_, machine)) return false;
    for (const WertAenderung& value : undo.aenderung.werte) {
        const RegAddress place = addressOf(ctx_, undo, value);
        if (storeOf(ctx_, machine).value(place.root, place.key, *place.name) != value.neu) return false;
    }
    for (std::size_t k = 0; k < undo.aenderung.schluessel.size(); ++k) {
        if (k >= undo.nachher.size() || !undo.nachher[k]) return false;
        const RegAddress place = addressOf(ctx_, undo, undo.aenderung.schluessel[k].path);
        if (contentOf(schluesselBild(storeOf(ctx_, machine), machine, {place.root, place.key})) != contentOf(*undo.nachher[k])) return false;
    }
    return std::all_of(undo.aenderung.dateien.begin(), undo.aenderung.dateien.end(), [&](const DateiBild& file) {
        const auto now = ChangedFile(ctx_, machine, file.datei).read();
        return now.value_or(std::string()) == file.neu;
    });
}

}  // namespace brenvik
