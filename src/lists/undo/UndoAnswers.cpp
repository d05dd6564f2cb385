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

std::string shownKey(const KeyImage& image) {
    if (image.unterschluessel.empty()) return messages::NotThere;
    return fmt::format("Schlüssel mit {} Unterschlüsseln und {} Werten", image.unterschluessel.size() - 1, image.values.size());
}

std::string shownFile(const std::optional<std::string>& bytes) {
    return bytes ? fmt::format("Datei mit {} Bytes", bytes->size()) : std::string(messages::NotThere);
}

// What is in the image beside its details: keys and values, in no order.
std::set<std::string> contentOf(const KeyImage& image) {
    std::set<std::string> content;
    for (const auto& key : image.unterschluessel) content.insert("K" + key);
    for (const auto& [unter, wert] : image.values)
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

KeyImage absent(const KeyImage& image) { return {image.machine, image.path, {}, {}}; }

// What a change did to a key, or was to do.
bool changedKey(const JournalEntry& change, std::size_t k) {
    const KeyImage& image = change.change.key[k];
    return image.geloescht || image.created || isUndo(change);   // others are kept for looking only: their values are recorded one by one
}
KeyImage before(const KeyImage& image) { return image.created ? absent(image) : image; }

}  // namespace

struct UndoAnswer::Plan {
    struct Wert {
        RegAddress place;
        std::int16_t tipp = 0;
        std::optional<RawValue> now, target;
    };
    struct Key {
        RegAddress place;
        KeyImage now, target;
    };
    struct Datei {
        std::string file;
        std::optional<std::string> now, target;
    };
    struct Conflict {
        UndoConflictsRequest::Row row;
        std::string id;                        // of the place
        std::size_t values = None, key = None, dateien = None;   // which of the lists below
        std::optional<RawValue> now;           // of a value
    };
    static constexpr std::size_t None = static_cast<std::size_t>(-1);
    std::string machine;
    std::vector<Wert> values;
    std::vector<Key> key;
    std::vector<Datei> dateien;
    std::vector<Conflict> conflicts;
    std::vector<RegAddress> gone;              // places of values that are not there, and need not be deleted
    std::size_t kept = 0;
    bool empty() const { return values.empty() && key.empty() && dateien.empty(); }
};

// --- where, and how it is shown ---

std::string machineOf(const JournalHeader& change) { return change.machineName.empty() ? change.localMachine : change.machineName; }

std::string shownRaw(const std::optional<RawValue>& value) {
    if (!value) return messages::NotThere;
    static constexpr const char* Names[] = {"REG_NONE", "REG_SZ", "REG_EXPAND_SZ", "REG_BINARY", "REG_DWORD", "REG_DWORD_BIG_ENDIAN", "REG_LINK", "REG_MULTI_SZ"};
    const std::string type = value->type < std::size(Names) ? Names[value->type] : "Typ " + std::to_string(value->type);
    return type + " \"" + shownLine(dataText(*value), MostShown) + "\"";
}

JournalHeader newHead(Context& ctx, Change::Art art) {
    const DateTime now = ctx.port.now();
    JournalHeader head;
    head.zeit = fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", now.year, now.month, now.day, now.hour, now.minute, now.second);
    head.machineName = machineMark(ctx, ctx.strRechnername);
    head.localMachine = ctx.strLokalerRechner;
    head.benutzer = ctx.strUserName;
    head.sid = ctx.strEigeneSID;
    head.art = art;
    return head;
}

bool UndoAnswer::refuse(const char* why) {
    ctx_.port.tell(why, box::Exclamation);
    return false;
}

bool UndoAnswer::mayWorkOn(const std::string& machine) {
    if (atHand(ctx_, machine)) return true;
    if (!ctx_.port.ask(isFolder(machine) ? fmt::format(messages::OtherFolder, machine) : fmt::format(messages::OtherMachine, machine), box::Exclamation + box::DefaultNo)) return false;
    return ctx_.objBVKReg.ConnectRemote(machine, LocalMachineRoot) == 0 || refuse(fmt::format(messages::MachineNotReachable, machine).c_str());
}

// --- deciding ---

// Of several writes to one place the first tells what was, the last what came. Values that came out as they were are none
// of the change.
void UndoAnswer::planValues(const JournalEntry& change, const PriorState& prior, Plan& plan) {
    std::map<std::string, std::pair<RegAddress, ValueChange>> byPlace;
    for (const ValueChange& value : change.change.values) {
        RegAddress place = addressOf(ctx_, change, value);
        std::string id = place.id();
        const auto [known, fresh] = byPlace.try_emplace(std::move(id), std::move(place), value);
        if (fresh) continue;
        known->second.second.neu = value.neu;
        known->second.second.written = known->second.second.written || value.written;
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
            if (!value.written) continue;   // never was ours
            plan.conflicts.push_back({{shownPath(ctx_, place), shownRaw(target), shownRaw(value.neu), shownRaw(now)}, id, plan.values.size(), Plan::None, Plan::None, now});
        }
        plan.values.push_back({place, value.TippIndex, now, target});
    }
}

void UndoAnswer::planKeys(const JournalEntry& change, const PriorState& prior, Plan& plan) {
    const auto& images = change.change.key;
    for (std::size_t k = 0; k < images.size(); ++k) {
        if (!changedKey(change, k)) continue;
        KeyImage target = before(images[k]);
        const RegAddress place = addressOf(ctx_, change, target.path);
        std::vector<RegAddress> gone = prior.correct(place, target);
        KeyImage now = keyImage(storeOf(ctx_, place.machine), place.machine, {place.root, place.key});
        const auto is = contentOf(now), was = contentOf(target);
        if (is == was) continue;
        const bool known = k < change.afterwards.size() && change.afterwards[k];
        const KeyImage after = known ? *change.afterwards[k] : images[k].created ? images[k] : absent(images[k]);
        // What is left of a key that was deleted in part is no work of somebody else.
        const bool rest = !known && std::includes(was.begin(), was.end(), is.begin(), is.end());
        if (is != contentOf(after) && !rest)
            plan.conflicts.push_back({{shownPath(ctx_, place), shownKey(target), shownKey(after), shownKey(now)}, place.id(), Plan::None, plan.key.size(), Plan::None, {}});
        plan.key.push_back({place, std::move(now), std::move(target)});
        plan.gone.insert(plan.gone.end(), gone.begin(), gone.end());
    }
}

void UndoAnswer::planFiles(const JournalEntry& change, const PriorState& prior, Plan& plan) {
    for (const FileImage& file : change.change.dateien) {
        const std::optional<std::string> target = prior.file(file.datei, file.there ? std::optional(file.contents) : std::nullopt);
        const auto now = ChangedFile(ctx_, plan.machine, file.datei).read();
        if (now == target) continue;
        if (now.value_or(std::string()) != file.neu) {
            if (!file.written) continue;
            plan.conflicts.push_back({{file.datei, shownFile(target), shownFile(file.neu), shownFile(now) + (now ? newLines(file.neu, *now) : std::string())}, lowerCase(file.datei),
                                      Plan::None, Plan::None, plan.dateien.size(), {}});
        }
        plan.dateien.push_back({file.datei, now, target});
    }
}

// Says of each conflict who made it, as far as that is known, and takes out of the plan what is to stay.
bool UndoAnswer::settleConflicts(const JournalEntry& change, Plan& plan) {
    if (plan.conflicts.empty()) return true;
    std::map<std::string, std::string> ours;   // by place
    const auto tell = [](const JournalHeader& step) { return fmt::format(messages::OwnChange, step.nummer, step.zeit, shownLine(step.überschrift, MostShown)); };
    journal_.eachStep([&](JournalStep& step) {
        if (step.nummer <= change.nummer) return;
        for (const auto& conflict : plan.conflicts) {
            const auto lies = [&](const RegAddress& place) { return conflict.key != Plan::None ? place.isBelow(conflict.id) : place.id() == conflict.id; };
            for (const ValueChange& value : step.values)
                if (conflict.dateien == Plan::None && lies(addressOf(ctx_, step, value))) {
                    const bool stands = conflict.key != Plan::None || value.neu == conflict.now;
                    if (stands) ours[conflict.id] = tell(step);
                    else ours.erase(conflict.id);
                }
            for (const KeyImage& key : step.key)
                if (conflict.dateien == Plan::None && (lies(addressOf(ctx_, step, key.path)) || addressOf(ctx_, step, key.path).id() == conflict.id)) ours[conflict.id] = tell(step);
            for (const FileImage& file : step.dateien)
                if (conflict.dateien != Plan::None && lowerCase(file.datei) == conflict.id && file.neu == plan.dateien[conflict.dateien].now) ours[conflict.id] = tell(step);
        }
    });
    UndoConflictsRequest request;
    for (auto& conflict : plan.conflicts) {
        const auto own = ours.find(conflict.id);
        conflict.row.by = own != ours.end() ? own->second : messages::ByOthers;
        request.rows.push_back(conflict.row);
    }
    ctx_.port.showWindow(request);
    if (!request.proceed) return false;
    for (std::size_t k = plan.conflicts.size(); k-- > 0;) {   // from the end, for the places to stay right
        if (request.rows[k].restore) continue;
        const auto& conflict = plan.conflicts[k];
        const auto erase = [](auto& list, std::size_t place) { list.erase(list.begin() + static_cast<std::ptrdiff_t>(place)); };
        if (conflict.values != Plan::None) erase(plan.values, conflict.values);
        if (conflict.key != Plan::None) erase(plan.key, conflict.key);
        if (conflict.dateien != Plan::None) erase(plan.dateien, conflict.dateien);
        ++plan.kept;
    }
    return true;
}

// --- doing ---

void UndoAnswer::writeRegistry(const JournalEntry& change, const Plan& plan) {
    if (plan.values.empty() && plan.key.empty() && plan.gone.empty()) return;
    RegStore& store = storeOf(ctx_, plan.machine);
    store.transaction([&] {
        for (const auto& [place, now, target] : plan.key) {
            if (!target.unterschluessel.empty()) {
                replaceTree(store, place.root, place.key, [&image = target](TreeSink& sink) { tellImage(image, sink); });
            } else {
                store.clear(place.root, place.key);
                store.deleteKey(place.root, place.key);
            }
        }
        std::vector<RegAddress> places;
        for (const auto& value : plan.values) {
            const RegAddress& place = value.place;
            value.target ? store.setValue(place.root, place.key, *place.name, *value.target) : void(store.deleteValue(place.root, place.key, *place.name));
            if (store.value(place.root, place.key, *place.name) != value.target) throw RegError(regerr::NoAssignment, shownPath(ctx_, place));
            places.push_back(place);
        }
        places.insert(places.end(), plan.gone.begin(), plan.gone.end());
        removeEmptyKeys(change, places);
    });
}

void UndoAnswer::removeEmptyKeys(const JournalEntry& change, const std::vector<RegAddress>& values) {
    if (values.empty()) return;
    std::vector<std::string> made;   // by ids
    for (const std::string& path : change.newKeys) made.push_back(addressOf(ctx_, change, path).id());
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

void UndoAnswer::perform(const JournalEntry& change, const Plan& plan) {
    std::vector<const Plan::Datei*> done;
    std::set<std::string> unprotected;
    const auto write = [&](const std::string& name, const std::optional<std::string>& bytes) {
        const ChangedFile file(ctx_, plan.machine, name);
        if (file.isProtected()) {
            if (!ctx_.port.ask(fmt::format(messages::FileWriteProtection, name))) throw NumberedError(errnum::PathFileAccess, "Die Datei \"" + name + "\" ist schreibgeschützt.");
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
    throw NumberedError(errnum::Internal, notBack.empty() ? fmt::format(messages::ExactFailed, failure) : fmt::format(messages::ExactHalfFailed, failure, notBack));
}

JournalEntry UndoAnswer::recordOf(const JournalEntry& change, Change::Art art, const Plan& plan) {
    JournalEntry record;
    static_cast<JournalHeader&>(record) = newHead(ctx_, art);
    record.machineName = plan.machine;
    record.tipp = change.tipp, record.überschrift = change.überschrift, record.undoes = change.nummer;
    Change& done = record.change;
    for (const auto& value : plan.values) done.values.push_back({plan.machine, value.place.keyPath(), value.tipp, value.now, value.target, false, value.place.name->text()});
    for (const auto& key : plan.key) {
        done.key.push_back(key.now);
        record.afterwards.emplace_back(key.target);
    }
    for (const auto& file : plan.dateien) done.dateien.push_back({file.file, file.now.value_or(std::string()), file.now.has_value(), file.target.value_or(std::string()), false});
    return record;
}

UndoAnswer::WayOut UndoAnswer::restore(const JournalEntry& change, Change::Art art, const std::function<void(std::int64_t)>& mark, std::size_t& kept) {
    Plan plan;
    plan.machine = markOf(ctx_, change);
    if (!mayWorkOn(plan.machine)) return WayOut::Declined;
    const PriorState prior(ctx_, journal_, change);
    planValues(change, prior, plan);
    planKeys(change, prior, plan);
    planFiles(change, prior, plan);
    if (!settleConflicts(change, plan)) return WayOut::Declined;
    kept = plan.kept;
    if (plan.empty() && kept > 0) return WayOut::AllKept;   // nothing is taken back, and so the change stands as before
    JournalEntry record = recordOf(change, art, plan);
    const std::int64_t recorded = journal_.add(record);
    try {
        perform(change, plan);
    } catch (const NumberedError&) {
        journal_.remove(recorded);
        throw;
    }
    for (ValueChange& value : record.change.values) value.written = true;
    for (FileImage& file : record.change.dateien) file.written = true;
    journal_.transaction([&] {
        journal_.finish(recorded, record);
        mark(recorded);
    });
    if (plan.empty()) return WayOut::Nothing;
    ctx_.platform.sendSettingChange(0, 2, 10000);
    return WayOut::Done;
}

bool UndoAnswer::undo(std::int64_t nummer, bool tell) {
    const host::FolderLock turn(ctx_.homePath, PatienceForOthers);   // each takes back on what the one before it has left
    if (turn.error() == std::errc::timed_out) return refuse(messages::AnotherUndoes);
    try {
        const auto change = journal_.entry(nummer);
        if (!change) return refuse(fmt::format(messages::NoSuchEntry, nummer).c_str());
        if (change->undoneBy != 0) return refuse(messages::AlreadyUndone);
        if (change->lineOnly) return refuse(messages::NotInJournal);
        std::size_t kept = 0;
        const WayOut result = restore(*change, Change::Art::Undo, [&](std::int64_t recorded) { journal_.takenBack(nummer, recorded); }, kept);
        if (result == WayOut::Declined) return false;
        if (result == WayOut::AllKept) return refuse(messages::AllesBleibt);
        if (tell) ctx_.port.tell(kept > 0 ? fmt::format(messages::ExactExceptFor, kept) : result == WayOut::Nothing ? messages::ExactAlready : messages::ExactDone);
        return true;
    } catch (const std::exception& error) {
        return refuse(error.what());
    }
}

bool UndoAnswer::restore(std::int64_t nummer) {
    const host::FolderLock turn(ctx_.homePath, PatienceForOthers);
    if (turn.error() == std::errc::timed_out) return refuse(messages::AnotherUndoes);
    try {
        const auto change = journal_.head(nummer);
        if (!change) return refuse(fmt::format(messages::NoSuchEntry, nummer).c_str());
        const auto undo = change->undoneBy != 0 ? journal_.entry(change->undoneBy) : std::nullopt;
        if (!undo) return refuse(messages::NotUndoable);
        std::size_t kept = 0;
        const WayOut result = restore(*undo, Change::Art::Restore, [&](std::int64_t recorded) {
            journal_.takenBack(undo->nummer, recorded);
            journal_.takenBack(nummer, 0);
        }, kept);
        if (result == WayOut::Declined) return false;
        if (result == WayOut::AllKept) return refuse(messages::AllesBleibt);
        if (change->zeile) history_.putBack(*change->zeile);
        ctx_.port.tell(kept > 0 ? fmt::format(messages::RedoExceptFor, kept) : result == WayOut::Nothing ? messages::RedoNothing : messages::RedoDone);
        return true;
    } catch (const std::exception& error) {
        return refuse(error.what());
    }
}

bool UndoAnswer::isDone(const JournalEntry& undo) {
    const std::string machine = markOf(ctx_, undo);
    if (!atHand(ctx_, machine)) return false;
    for (const ValueChange& value : undo.change.values) {
        const RegAddress place = addressOf(ctx_, undo, value);
        if (storeOf(ctx_, machine).value(place.root, place.key, *place.name) != value.neu) return false;
    }
    for (std::size_t k = 0; k < undo.change.key.size(); ++k) {
        if (k >= undo.afterwards.size() || !undo.afterwards[k]) return false;
        const RegAddress place = addressOf(ctx_, undo, undo.change.key[k].path);
        if (contentOf(keyImage(storeOf(ctx_, machine), machine, {place.root, place.key})) != contentOf(*undo.afterwards[k])) return false;
    }
    return std::all_of(undo.change.dateien.begin(), undo.change.dateien.end(), [&](const FileImage& file) {
        const auto now = ChangedFile(ctx_, machine, file.datei).read();
        return now.value_or(std::string()) == file.neu;
    });
}

}  // namespace brenvik
