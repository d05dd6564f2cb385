#pragma once
// The program put together: home, store, machines, context, database and engine, in the order of the start. Window and
// command line each make one and hand its context on.
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "registry/HiveFilesImpl.h"
#include "registry/LocalMachines.h"
#include "registry/SqliteStore.h"
#include "tipengine/Ladefolge.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {

struct ProgrammOptionen {
    std::filesystem::path home;                         // empty: BRENVIK_HOME, else the platform's data directory
    std::optional<std::filesystem::path> programmPfad;  // the folder of the executable if not given
    std::string machine = {};                           // a machine's name, or the folder of a Windows; goes before /PC:
};

class Programm {
public:
    // Opens home and store, fills the store at the first start. Throws NumberedError with a German message for the user.
    Programm(UserPort& port, Platform& platform, const ProgrammOptionen& options, WindowObserver& observer, ChangeRecorder& recorder);
    Programm(const Programm&) = delete;
    Programm& operator=(const Programm&) = delete;
    ~Programm();

    // The steps of the load sequence that need no window. Each is called once, in this order.
    void loadSettings();       // those the core asks for
    void detectSystem();       // operating system, user, directories, rights, profile: the next three in one, with nobody looking
    void recogniseSystem();
    void fitToSystem(Startanzeige& anzeige, const Ladeschritte::Anmelden& account = {});   // rights, and the machine to work on
    void takeProfile();        // whose HKCU it is
    bool loadDatabase();       // false: the program ends (the user has been told)

    Context& context() { return *context_; }
    TippMaschine& maschine() { return *maschine_; }
    RegStore& localStore() { return *store_; }
    LocalMachines& machines() { return *machines_; }
    std::filesystem::path datenbankDatei() const;

private:
    std::string machine_;
    std::unique_ptr<SqliteStore> store_;
    std::unique_ptr<LocalMachines> machines_;
    RegfHiveFiles hiveFiles_;
    std::unique_ptr<Context> context_;
    std::unique_ptr<TippMaschine> maschine_;
};

}  // namespace brenvik
