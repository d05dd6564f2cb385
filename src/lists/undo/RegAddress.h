#pragma once
// The one address of what a change touched in a registry, by which two changes of one place are known for such however they
// were made: the machine, a key by its real place (HKLM or HKU, the long name of the root, no links in the path), and the
// value's name apart from it.
#include <optional>
#include <string>

#include "tipengine/Context.h"
#include "tipengine/values/Change.h"

namespace brenvik {

struct JournalHeader;
struct JournalEntry;

struct RegAddress {
    std::string machine;                 // as machineMark has it
    Root root = Root::LocalMachine;
    std::string key;
    std::optional<ValueName> name;       // none: the key

    std::string keyPath() const;         // "HKEY_USERS\\S-1-5-21-1\\Key"
    std::string path() const;            // of a value with its name; "...\\Key\\" is the unnamed one
    std::string id() const;              // equal for one place, compared by the stores' own table; its form is nobody's business
    bool isBelow(const std::string& keyId) const;   // a value of that key, or anything further down
};

// How records name a machine: the local one by nothing, for its name may change; a folder that holds a Windows by its full
// path without links; others by their name.
std::string machineMark(const FrameContext& ctx, const std::string& machine);
bool isFolder(const std::string& machine);           // of the host, told by a separator in the name
bool sameMachine(const std::string& mark, const std::string& other);

std::string markOf(const FrameContext& ctx, const JournalHeader& change);
// The local machine, or the one that is being worked on.
bool atHand(const FrameContext& ctx, const std::string& mark);

RegStore& storeOf(Context& ctx, const std::string& mark);   // throws RegError if the machine does not answer

std::string givenPath(const ValueChange& value);          // root "\\" key "\\" name, as a change has it

// Where a value that is about to be written, or deleted, really lies. Throws RegError for a path that is none.
RegAddress addressForWriting(Context& ctx, const ValueChange& value, bool deletes);
RegAddress keyAddress(Context& ctx, const std::string& machine, const std::string& path);

// Of what the journal has. Records of former versions hold paths as they were given; their links are followed now, as far as
// the machine can be asked without connecting to it.
RegAddress addressOf(Context& ctx, const JournalHeader& change, const ValueChange& value);
RegAddress addressOf(Context& ctx, const JournalHeader& change, const std::string& keyPath);

// Of the k-th pair of a line.
RegAddress pairAddress(Context& ctx, const JournalEntry& change, std::size_t k);

// The path as it is shown: what belongs to the user's own profile stands below HKEY_CURRENT_USER.
std::string shownPath(const FrameContext& ctx, const RegAddress& address);

}  // namespace brenvik
