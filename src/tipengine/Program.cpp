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

constexpr const char* FirstStartFolder = "erststart";

std::filesystem::path homeOf(Platform& platform, const ProgramOptions& options) {
    if (!options.home.empty()) return std::filesystem::absolute(options.home);
    if (const auto home = platform.environment("BRENVIK_HOME"); home && !home->empty()) return std::filesystem::absolute(*home);
    return platform.defaultHome();
}

}  // namespace

Program::Program(UserPort& port, Platform& platform, const ProgramOptions& options, WindowObserver& observer, ChangeRecorder& recorder)
    : machine_(options.machine), machines_([this]() -> RegStore& { return store(); }), context_(port, platform, machines_), engine_(context_, observer, recorder) {
    reachOfflineWindows(machines_, [&port](const std::string& question) { return port.ask(question, box::Exclamation + box::DefaultNo); });
    Context& ctx = context_;
    ctx.objBVKReg.setHiveFiles(&hiveFiles_);
    ctx.programPath = options.programPath.value_or(platform.executableDirectory());
    ctx.homePath = homeOf(platform, options);
    ctx.strKlickWav = ctx.programPath / product::ClickWav;
    ctx.strProgVersion = BRENVIK_VERSION;
    ctx.strParamProfil = options.profile;
    ctx.trace.setFile(ctx.homePath / product::LogFile);
}

SqliteStore& Program::store() {
    if (store_ == nullptr) openHome();
    return *store_;
}

void Program::openHome() {
    if (store_ != nullptr) return;
    const auto file = context_.homePath / "registry.db";
    std::string problem = privateHome(context_.homePath);
    try {
        if (problem.empty()) store_ = std::make_unique<SqliteStore>(file);
        if (store_ != nullptr) fillHome();
    } catch (const NumberedError& error) {
        std::error_code unknown;
        if (std::filesystem::exists(file, unknown) && (store_ == nullptr || !store_->isEmpty())) throw;
        problem = error.what();
    }
    if (!problem.empty()) showNewHome(file, problem);
    if (writeObstacle_.empty()) writeObstacle_ = store_->whyReadOnly();
    if (opened_) std::exchange(opened_, nullptr)();
}

// What a home would hold at its first start can be looked at also where none can be made.
void Program::showNewHome(const std::filesystem::path& file, const std::string& problem) {
    store_ = std::make_unique<SqliteStore>(file, StoreOptions{.inMemory = true});
    fillEmptyStore(*store_, context_.programPath / FirstStartFolder);
    writeObstacle_ = problem + " " + messages::HomeOnlyShown;
    store_->seal(writeObstacle_);
    homeMissing_ = true;
}

void Program::fillHome() {
    if (!store_->writable()) return;
    privateFiles(context_.homePath);
    fillEmptyStore(*store_, context_.programPath / FirstStartFolder);
    try {
        copyDriveC(context_.programPath / FirstStartFolder, context_.homePath);
    } catch (const NumberedError& problem) {
        writeObstacle_ = problem.what();   // the registry is there all the same
    }
}

void Program::offerMissingFiles(bool remember) {
    openHome();
    if (!store_->writable()) return;
    const auto source = context_.programPath / FirstStartFolder;
    const std::vector<std::string> missing = missingOnDriveC(source, context_.homePath);
    if (missing.empty()) return;
    std::string names;
    for (const std::string& name : missing) names += "\r\n" + name;
    if (context_.port.ask(messages::DriveIncomplete1 + names + messages::DriveIncomplete2))
        reportAndGoOn(context_, "copyDriveC", [&] { completeDriveC(source, context_.homePath); });
    else if (remember)
        confirmDriveC(context_.homePath);
}

Program::~Program() = default;

void Program::loadSettings() {
    openHome();
    loadCoreSettings(context_);
}

void Program::detectSystem() {
    StartDisplay nobodyLooks;
    recogniseSystem();
    fitToSystem(nobodyLooks);
    takeProfile();
}

void Program::recogniseSystem() {
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

void Program::fitToSystem(StartDisplay& display, const LoadSteps::Logon& account) {
    BSEinstellungen(context_, store(), display, account);
    if (!machine_.empty()) turnToMachine(context_, machine_, display, account);
}

// The own profile is none of another machine's; on one that does not run, the first user stands for the current one.
void Program::takeProfile() {
    Context& ctx = context_;
    ctx.strUserSID = ctx.strEigeneSID;
    if (const std::string sid = ctx.target().profile(); !sid.empty()) ctx.strUserSID = sid;
    ctx.strProfilSID = ctx.strUserSID;
    ctx.trace.write("User SID: " + ctx.strUserSID);
}

bool Program::loadDatabase() { return LoadDB(context_, databaseFile()) == LoadResult::Loaded; }

std::filesystem::path Program::databaseFile() const { return context_.programPath / DatabaseName; }

}  // namespace brenvik
