#pragma once
// The program put together: home, store, machines, context, database and engine, in the order of the start. Window and
// command line each make one and hand its context on.
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "registry/hivefile/HiveFilesImpl.h"
#include "registry/machine/LocalMachines.h"
#include "registry/store/SqliteStore.h"
#include "tipengine/LoadSequence.h"
#include "tipengine/TipEngine.h"

namespace brenvik {

struct ProgramOptions {
    std::filesystem::path home;                         // empty: BRENVIK_HOME, else the platform's data directory
    std::optional<std::filesystem::path> programPath;  // the folder of the executable if not given
    std::string machine = {};                           // a machine's name, or the folder of a Windows; goes before /PC:
    std::string profile = {};                           // of that machine: SID or user's name
};

class Program {
public:
    // Touches nothing yet: home and store are opened when something first needs them.
    Program(UserPort& port, Platform& platform, const ProgramOptions& options, WindowObserver& observer, ChangeRecorder& recorder);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    // Opens home and store, fills both at the first start. What cannot be written is opened for reading; where no home can be
    // made one is shown as it would be. Throws NumberedError with a German message for the user.
    void openHome();
    void whenOpened(std::function<void()> work) { opened_ = std::move(work); }   // once, as soon as home and store are there
    // Why the home takes nothing, or not all; empty if all is well (or it has not been opened).
    const std::string& writeObstacle() const { return writeObstacle_; }
    bool homeMissing() const { return homeMissing_; }      // what is shown is no home that anybody has
    // Asks whether files that the home's drive lacks since its first start are to be added. remember: No is for good.
    void offerMissingFiles(bool remember);

    // The steps of the load sequence that need no window. Each is called once, in this order.
    void loadSettings();       // those the core asks for
    void detectSystem();       // operating system, user, directories, rights, profile: the next three in one, with nobody looking
    void recogniseSystem();
    void fitToSystem(StartDisplay& display, const LoadSteps::Logon& account = {});   // rights, and the machine to work on
    void takeProfile();        // whose HKCU it is
    bool loadDatabase();       // false: the program ends (the user has been told)

    Context& context() { return context_; }
    TipEngine& engine() { return engine_; }
    RegStore& localStore() { return store(); }
    LocalMachines& machines() { return machines_; }
    std::filesystem::path databaseFile() const;

private:
    SqliteStore& store();
    void fillHome();
    void showNewHome(const std::filesystem::path& file, const std::string& problem);

    std::string machine_, writeObstacle_;
    bool homeMissing_ = false;
    std::function<void()> opened_;
    std::unique_ptr<SqliteStore> store_;
    LocalMachines machines_;
    RegfHiveFiles hiveFiles_;
    Context context_;
    TipEngine engine_;
};

}  // namespace brenvik
