#include "tipengine/Programm.h"

#include "frame/Produkt.h"
#include "frame/Version.h"
#include "registry/Einstellungen.h"
#include "registry/FirstStart.h"
#include "registry/HiveStore.h"
#include "registry/OfflineWindows.h"
#include "tipdb/LoadDB.h"
#include "tipengine/System.h"

namespace brenvik {
namespace {

std::filesystem::path homeOf(Platform& platform, const ProgrammOptionen& options) {
    if (!options.home.empty()) return std::filesystem::absolute(options.home);
    if (const auto home = platform.environment("BRENVIK_HOME"); home && !home->empty()) return std::filesystem::absolute(*home);
    return platform.defaultHome();
}

}  // namespace

Programm::Programm(UserPort& port, Platform& platform, const ProgrammOptionen& options, WindowObserver& observer, ChangeRecorder& recorder)
    : machine_(options.machine) {
    const auto program = options.programmPfad.value_or(platform.executableDirectory());
    const auto home = homeOf(platform, options);
    std::error_code error;
    std::filesystem::create_directories(home, error);
    if (error)
        throw NumberedError(errnum::PathFileAccess, "Das Verzeichnis " + home.string() +
                                                        " kann nicht angelegt werden. Bitte geben Sie mit --home ein anderes an.");
    store_ = std::make_unique<SqliteStore>(home / "registry.db");
    fillEmptyStore(*store_, program / "erststart");
    copyDriveC(program / "erststart", home);
    machines_ = std::make_unique<LocalMachines>(*store_);
    reachOfflineWindows(*machines_);
    context_ = std::make_unique<Context>(port, platform, *machines_);
    Context& ctx = *context_;
    ctx.objBVKReg.setHiveFiles(&hiveFiles_);
    ctx.programmPfad = program;
    ctx.heimPfad = home;
    ctx.strKlickWav = program / produkt::KlickWav;
    ctx.strProgVersion = BRENVIK_VERSION;
    ctx.trace.setFile(home / produkt::LogDatei);
    maschine_ = std::make_unique<TippMaschine>(ctx, observer, recorder);
}

Programm::~Programm() = default;

void Programm::loadSettings() { loadCoreSettings(*context_); }

void Programm::detectSystem() {
    Startanzeige nobodyLooks;
    recogniseSystem();
    fitToSystem(nobodyLooks);
    takeProfile();
}

void Programm::recogniseSystem() {
    Context& ctx = *context_;
    ctx.osVersion = readSystemVersion(ctx);
    BSErmitteln(ctx, ctx.osVersion);
    ctx.blnLokal = true;
    ctx.strLokalerRechner = ctx.objBVKReg.GetComputerName();
    ctx.trace.write("Lokaler Rechnername: " + ctx.strLokalerRechner);
    UserSIDRead(ctx, ctx.strLokalerRechner);
    readUserAndDirectories(ctx, *store_);
    if (!ctx.platform.browserComponent()) readBrowserVersion(ctx);
}

void Programm::fitToSystem(Startanzeige& anzeige, const Ladeschritte::Anmelden& account) {
    BSEinstellungen(*context_, *store_, anzeige, account);
    if (!machine_.empty()) turnToMachine(*context_, machine_, anzeige, account);
}

// The own profile is none of another machine's; on one that does not run, the first user stands for the current one.
void Programm::takeProfile() {
    Context& ctx = *context_;
    ctx.strUserSID = ctx.strEigeneSID;
    if (!ctx.blnLokal)
        if (const auto* hives = dynamic_cast<const HiveStore*>(&machines_->store(ctx.strRechnername))) ctx.strUserSID = hives->currentUserSid();
    ctx.strProfilSID = ctx.strUserSID;
    ctx.trace.write("User SID: " + ctx.strUserSID);
}

bool Programm::loadDatabase() { return LoadDB(*context_, datenbankDatei()) == LoadErgebnis::Geladen; }

std::filesystem::path Programm::datenbankDatei() const { return context_->programmPfad / "RegDaten.mdb"; }

}  // namespace brenvik
