#include "tipengine/Program.h"

#include <utility>

#include "frame/Messages.h"
#include "frame/Reports.h"
#include "frame/Version.h"
#include "frame/program/Product.h"
#include "registry/Settings.h"
#include "registry/machine/FirstStart.h"
#include "registry/machine/OfflineWindows.h"
#include "tipdb/LoadDB.h"
#include "tipdb/Schema.h"
#include "tipengine/System.h"

namespace brenvik {
namespace {

constexpr const char* ErststartOrdner = "erststart";

std::filesystem::path homeOf(Platform& platform, const ProgrammOptionen& options) {
    if (!options.home.empty()) return std::filesystem::absolute(options.home);
    if (const auto home = platform.environment("BRENVIK_HOME"); home && !home->empty()) return std::filesystem::absolute(*home);
    return platform.defaultHome();
}

}  // namespace

Programm::Programm(UserPort& port, Platform& platform, const ProgrammOptionen& options, WindowObserver& observer, ChangeRecorder& recorder)
    : machine_(options.machine), machines_([this]() -> RegStore& { return store(); }), context_(port, platform, machines_), maschine_(context_, observer, recorder) {
    reachOfflineWindows(machines_, [&port](const std::string& question) { return port.ask(question, box::Exclamation + box::DefaultNo); });
    Context& ctx = context_;
    ctx.objBVKReg.setHiveFiles(&hiveFiles_);
    ctx.programmPfad = options.programmPfad.value_or(platform.executableDirectory());
    ctx.heimPfad = homeOf(platform, options);
    ctx.strKlickWav = ctx.programmPfad / produkt::KlickWav;
    ctx.strProgVersion = BRENVIK_VERSION;
    ctx.strParamProfil = options.profile;
    ctx.trace.setFile(ctx.heimPfad / produkt::LogDatei);
}

SqliteStore& Programm::store() {
    if (store_ == nullptr) openHome();
    return *store_;
}

void Programm::openHome() {
    if (store_ != nullptr) return;
    const auto file = context_.heimPfad / "registry.db";
    std::string problem = privateHome(context_.heimPfad);
    try {
        if (problem.empty()) store_ = std::make_unique<SqliteStore>(file);
        if (store_ != nullptr) fillHome();
    } catch (const NumberedError& error) {
        std::error_code unknown;
        if (std::filesystem::exists(file, unknown) && (store_ == nullptr || !store_->isEmpty())) throw;
        problem = error.what();
    }
    if (!problem.empty()) showNewHome(file, problem);
    if (schreibhindernis_.empty()) schreibhindernis_ = store_->whyReadOnly();
    if (opened_) std::exchange(opened_, nullptr)();
}

// What a home would hold at its first start can be looked at also where none can be made.
void Programm::showNewHome(const std::filesystem::path& file, const std::string& problem) {
    store_ = std::make_unique<SqliteStore>(file, StoreOptions{.inMemory = true});
    fillEmptyStore(*store_, context_.programmPfad / ErststartOrdner);
    schreibhindernis_ = problem + " " + meldung::HeimNurGezeigt;
    store_->seal(schreibhindernis_);
    heimFehlt_ = true;
}

void Programm::fillHome() {
    if (!store_->writable()) return;
    privateFiles(context_.heimPfad);
    fillEmptyStore(*store_, context_.programmPfad / ErststartOrdner);
    try {
        copyDriveC(context_.programmPfad / ErststartOrdner, context_.heimPfad);
    } catch (const NumberedError& problem) {
        schreibhindernis_ = problem.what();   // the registry is there all the same
    }
}

void Programm::offerMissingFiles(bool remember) {
    openHome();
    if (!store_->writable()) return;
    const auto source = context_.programmPfad / ErststartOrdner;
    const std::vector<std::string> missing = missingOnDriveC(source, context_.heimPfad);
    if (missing.empty()) return;
    std::string names;
    for (const std::string& name : missing) names += "\r\n" + name;
    if (context_.port.ask(meldung::LaufwerkUnvollstaendig1 + names + meldung::LaufwerkUnvollstaendig2))
        reportAndGoOn(context_, "copyDriveC", [&] { completeDriveC(source, context_.heimPfad); });
    else if (remember)
        confirmDriveC(context_.heimPfad);
}

Programm::~Programm() = default;

void Programm::loadSettings() {
    openHome();
    loadCoreSettings(context_);
}

void Programm::detectSystem() {
    Startanzeige nobodyLooks;
    recogniseSystem();
    fitToSystem(nobodyLooks);
    takeProfile();
}

void Programm::recogniseSystem() {
    Context& ctx = context_;
    ctx.osVersion = readSystemVersion(ctx);
    BSErmitteln(ctx, ctx.osVersion);
    ctx.blnLokal = true;
    ctx.strLokalerRechner = ctx.objBVKReg.GetComputerName();
    ctx.trace.write("Lokaler Rechnername: " + ctx.strLokalerRechner);
    UserSIDRead(ctx, ctx.strLokalerRechner);
    readUserAndDirectories(ctx, store());
    if (!ctx.platform.browserComponent()) readBrowserVersion(ctx);
}

void Programm::fitToSystem(Startanzeige& anzeige, const Ladeschritte::Anmelden& account) {
    BSEinstellungen(context_, store(), anzeige, account);
    if (!machine_.empty()) turnToMachine(context_, machine_, anzeige, account);
}

// The own profile is none of another machine's; on one that does not run, the first user stands for the current one.
void Programm::takeProfile() {
    Context& ctx = context_;
    ctx.strUserSID = ctx.strEigeneSID;
    if (const std::string sid = ctx.target().profile(); !sid.empty()) ctx.strUserSID = sid;
    ctx.strProfilSID = ctx.strUserSID;
    ctx.trace.write("User SID: " + ctx.strUserSID);
}

bool Programm::loadDatabase() { return LoadDB(context_, datenbankDatei()) == LoadErgebnis::Geladen; }

std::filesystem::path Programm::datenbankDatei() const { return context_.programmPfad / DatenbankName; }

}  // namespace brenvik
