// export reg | adm | admx | reg-add | polfile
#include <algorithm>
#include <iostream>

#include "cli/export/ExportTips.h"
#include "cli/registry/RegistryOutput.h"
#include "export/AdmxTemplate.h"
#include "export/ExportFiles.h"
#include "export/Messages.h"
#include "export/PolicyFile.h"
#include "export/RegAddScript.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Texts.h"

namespace brenvik::cli {
namespace {

constexpr int TextRegSaved1 = 113, TextSaved2 = 114;
constexpr const char* Written1 = "Die Datei ";
constexpr const char* Written2 = " wurde geschrieben";

struct Choice : TipChoice {
    bool checked = false, regedit4 = false;
    std::string className, folder;
};

int exportReg(Program& program, const Choice& choice) {
    Context& ctx = program.context();
    RegForm form = regForm(ctx.einstellungen);
    if (choice.checked) form = RegForm::Checked;
    if (choice.regedit4) form = RegForm::CheckedRegedit4;
    const auto list = gather(program, choice, Needs::Values);
    if (!list) return 1;
    const ExportFile file = regFileExport(ctx, *list, list->size() > 1, form);
    if (!file.obstacle.empty()) return failed(file.obstacle);
    for (const std::string& path : file.leftOut) std::cerr << "Läßt sich in diesem Format nicht darstellen: " << oneLine(path) << "\n";
    if (!file.leftOut.empty() && !ctx.port.ask("Diese Werte fehlen dann in der Datei. Soll sie trotzdem geschrieben werden?")) return 1;
    const int code = print(program, choice.output, file.bytes, strBVKTexte(TextRegSaved1), strBVKTexte(TextSaved2));
    if (code == 0)
        if (const std::string more = hint(file, messages::RoadCommandLine, std::string::npos); !more.empty()) ctx.port.tell(more);
    return code;
}

int exportAdm(Program& program, const Choice& choice) {
    const auto list = gather(program, choice, Needs::Template);
    if (!list) return 1;
    const ExportFile file = admFile(program.context(), *list);
    if (!file.obstacle.empty()) return failed(file.obstacle);
    const int code = print(program, choice.output, file.bytes, messages::AdmMade1, messages::AdmMade2);
    if (code == 0)
        if (const std::string more = hint(file, nullptr, std::string::npos); !more.empty()) program.context().port.tell(more);
    return code;
}

int exportAdmx(Program& program, const Choice& choice) {
    const auto list = gather(program, choice, Needs::Template);
    if (!list) return 1;
    const AdmxTemplate files = admxTemplate(*list, program.context().udtGruppen, program.context().strDBVersion);
    for (const std::string& line : files.leftOut) std::cerr << "Weggelassen: " << line << "\n";
    if (files.policies == 0) return failed("Keiner der Werte läßt sich als Richtlinie schreiben");
    const std::filesystem::path folder = pathFromUtf8(choice.folder);
    for (const auto& [name, content] : {std::pair{AdmlFile, &files.adml}, std::pair{AdmxFile, &files.admx}}) {
        const auto file = folder / name;
        std::error_code error;
        std::filesystem::create_directories(file.parent_path(), error);
        if (error) return failed("Der Ordner " + utf8FromPath(file.parent_path()) + " kann nicht angelegt werden. " + fileErrorText(error));
        if (const int code = print(program, utf8FromPath(file), *content, Written1, Written2); code != 0) return code;
    }
    return 0;
}

int exportRegAdd(Program& program, const Choice& choice) {
    const auto list = gather(program, choice, Needs::Values);
    if (!list) return 1;
    const RegAddScript script = regAddScript(exportValues(*list), fileHeader(program.context()));
    if (!script.obstacles.empty()) return obstacles(script.obstacles, "Diese Werte lassen sich nicht als Zeile mit reg add schreiben");
    return print(program, choice.output, script.bytes, Written1, Written2);
}

int exportPolfile(Program& program, const Choice& choice) {
    const auto list = gather(program, choice, Needs::Values);
    if (!list) return 1;
    const ExportRecord item = exportValues(*list);
    const auto below = [&](Root root) {
        std::size_t count = 0;
        for (const ExportTip& tipp : item.tipps) count += static_cast<std::size_t>(std::count_if(tipp.values.begin(), tipp.values.end(), [&](const ExportValue& v) { return v.root == root; }));
        return count;
    };
    const std::size_t user = below(Root::CurrentUser), machine = below(Root::LocalMachine);
    if (choice.className.empty() && user > 0 && machine > 0)
        return failed("Registry.pol gibt es je einmal für Benutzer und Computer: --class user (" + std::to_string(user) + " Werte) oder --class machine (" +
                      std::to_string(machine) + ")", 2);
    const bool forUser = choice.className.empty() ? user > 0 : choice.className == "user";
    if ((forUser ? user : machine) == 0) return failed("Keiner der Werte liegt unter dem Hauptschlüssel, für den die Datei gilt");
    const PolicyFile file = policyFile(item, forUser ? Root::CurrentUser : Root::LocalMachine);
    if (!file.obstacles.empty()) return obstacles(file.obstacles, "Diese Werte lassen sich in Registry.pol nicht schreiben");
    for (const std::string& path : file.otherRoots) std::cerr << "Liegt unter einem anderen Hauptschlüssel und steht nicht in der Datei: " << oneLine(path) << "\n";
    return print(program, choice.output, file.bytes, Written1, Written2);
}

}  // namespace

void addExportCommands(CLI::App& app, Invocation& call) {
    auto* group = app.add_subcommand("export", "Tipps mit ihren Werten in Dateien schreiben");
    group->require_subcommand(1);
    const auto add = [&](const char* name, const char* text, int (*work)(Program&, const Choice&), bool withOutput = true) {
        const auto choice = std::make_shared<Choice>();
        auto* command = group->add_subcommand(name, text);
        if (!withOutput) command->add_option("DIR", choice->folder, "Ordner für die Vorlage; die Texte kommen nach DIR/de-DE")->required();
        choice->addTo(*command, withOutput);
        command->callback([&call, work, choice] {
            call.needsDatabase = true;
            call.run = reported([work, choice](Program& p) { return work(p, *choice); });
        });
        return std::pair(command, choice);
    };
    const auto [reg, regChoice] = add("reg", "REG-Datei, in der Form, die in den Optionen steht; mehrere Tipps als Liste", exportReg);
    reg->add_flag("--checked", regChoice->checked, "Im geprüften Format (Version 5.00, UTF-16), das jedes Programm richtig einliest");
    reg->add_flag("--regedit4", regChoice->regedit4, "Das geprüfte Format als REGEDIT4 (Windows-1252)");
    add("adm", "Richtlinien-Vorlage (ADM)", exportAdm);
    add("admx", "Richtlinien-Vorlage (ADMX mit ADML)", exportAdmx, false);
    add("reg-add", "Befehlsdatei für Windows (.cmd), die die Werte mit reg add setzt", exportRegAdd);
    const auto [pol, polChoice] = add("polfile", "Registry.pol mit den Werten unter HKCU oder HKLM", exportPolfile);
    pol->add_option("--class", polChoice->className, "user oder machine, wenn Werte unter beiden Hauptschlüsseln liegen")->check(CLI::IsMember({"user", "machine"}));
}

}  // namespace brenvik::cli
