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
constexpr const char* Geschrieben1 = "Die Datei ";
constexpr const char* Geschrieben2 = " wurde geschrieben";

struct Wahl : Tippauswahl {
    bool checked = false, regedit4 = false;
    std::string klasse, ordner;
};

int exportReg(Programm& programm, const Wahl& wahl) {
    Context& ctx = programm.context();
    RegForm form = regForm(ctx.einstellungen);
    if (wahl.checked) form = RegForm::Geprueft;
    if (wahl.regedit4) form = RegForm::GeprueftRegedit4;
    const auto list = sammle(programm, wahl, Bedarf::Werte);
    if (!list) return 1;
    const Exportdatei file = regDatei(ctx, *list, list->size() > 1, form);
    if (!file.hindernis.empty()) return failed(file.hindernis);
    for (const std::string& path : file.weggelassen) std::cerr << "Läßt sich in diesem Format nicht darstellen: " << oneLine(path) << "\n";
    if (!file.weggelassen.empty() && !ctx.port.ask("Diese Werte fehlen dann in der Datei. Soll sie trotzdem geschrieben werden?")) return 1;
    const int code = ausgeben(programm, wahl.ausgabe, file.bytes, strBVKTexte(TextRegSaved1), strBVKTexte(TextSaved2));
    if (code == 0)
        if (const std::string more = hinweis(file, meldung::WegBefehlszeile, std::string::npos); !more.empty()) ctx.port.tell(more);
    return code;
}

int exportAdm(Programm& programm, const Wahl& wahl) {
    const auto list = sammle(programm, wahl, Bedarf::Vorlage);
    if (!list) return 1;
    const Exportdatei file = admDatei(programm.context(), *list);
    if (!file.hindernis.empty()) return failed(file.hindernis);
    const int code = ausgeben(programm, wahl.ausgabe, file.bytes, meldung::AdmErstellt1, meldung::AdmErstellt2);
    if (code == 0)
        if (const std::string more = hinweis(file, nullptr, std::string::npos); !more.empty()) programm.context().port.tell(more);
    return code;
}

int exportAdmx(Programm& programm, const Wahl& wahl) {
    const auto list = sammle(programm, wahl, Bedarf::Vorlage);
    if (!list) return 1;
    const AdmxVorlage files = admxVorlage(*list, programm.context().udtGruppen, programm.context().strDBVersion);
    for (const std::string& line : files.weggelassen) std::cerr << "Weggelassen: " << line << "\n";
    if (files.richtlinien == 0) return failed("Keiner der Werte läßt sich als Richtlinie schreiben");
    const std::filesystem::path folder = pathFromUtf8(wahl.ordner);
    for (const auto& [name, content] : {std::pair{AdmlDatei, &files.adml}, std::pair{AdmxDatei, &files.admx}}) {
        const auto file = folder / name;
        std::error_code error;
        std::filesystem::create_directories(file.parent_path(), error);
        if (error) return failed("Der Ordner " + utf8FromPath(file.parent_path()) + " kann nicht angelegt werden. " + fileErrorText(error));
        if (const int code = ausgeben(programm, utf8FromPath(file), *content, Geschrieben1, Geschrieben2); code != 0) return code;
    }
    return 0;
}

int exportRegAdd(Programm& programm, const Wahl& wahl) {
    const auto list = sammle(programm, wahl, Bedarf::Werte);
    if (!list) return 1;
    const RegAddSkript script = regAddSkript(exportwerte(*list), dateikopf(programm.context()));
    if (!script.hindernisse.empty()) return hindernisse(script.hindernisse, "Diese Werte lassen sich nicht als Zeile mit reg add schreiben");
    return ausgeben(programm, wahl.ausgabe, script.bytes, Geschrieben1, Geschrieben2);
}

int exportPolfile(Programm& programm, const Wahl& wahl) {
    const auto list = sammle(programm, wahl, Bedarf::Werte);
    if (!list) return 1;
    const Exportsatz satz = exportwerte(*list);
    const auto below = [&](Root root) {
        std::size_t count = 0;
        for (const Exporttipp& tipp : satz.tipps) count += static_cast<std::size_t>(std::count_if(tipp.werte.begin(), tipp.werte.end(), [&](const Exportwert& v) { return v.root == root; }));
        return count;
    };
    const std::size_t user = below(Root::CurrentUser), machine = below(Root::LocalMachine);
    if (wahl.klasse.empty() && user > 0 && machine > 0)
        return failed("Registry.pol gibt es je einmal für Benutzer und Computer: --class user (" + std::to_string(user) + " Werte) oder --class machine (" +
                      std::to_string(machine) + ")", 2);
    const bool forUser = wahl.klasse.empty() ? user > 0 : wahl.klasse == "user";
    if ((forUser ? user : machine) == 0) return failed("Keiner der Werte liegt unter dem Hauptschlüssel, für den die Datei gilt");
    const Richtliniendatei file = richtliniendatei(satz, forUser ? Root::CurrentUser : Root::LocalMachine);
    if (!file.hindernisse.empty()) return hindernisse(file.hindernisse, "Diese Werte lassen sich in Registry.pol nicht schreiben");
    for (const std::string& path : file.andere) std::cerr << "Liegt unter einem anderen Hauptschlüssel und steht nicht in der Datei: " << oneLine(path) << "\n";
    return ausgeben(programm, wahl.ausgabe, file.bytes, Geschrieben1, Geschrieben2);
}

}  // namespace

void addExportBefehle(CLI::App& app, Aufruf& call) {
    auto* group = app.add_subcommand("export", "Tipps mit ihren Werten in Dateien schreiben");
    group->require_subcommand(1);
    const auto add = [&](const char* name, const char* text, int (*work)(Programm&, const Wahl&), bool withOutput = true) {
        const auto wahl = std::make_shared<Wahl>();
        auto* command = group->add_subcommand(name, text);
        if (!withOutput) command->add_option("DIR", wahl->ordner, "Ordner für die Vorlage; die Texte kommen nach DIR/de-DE")->required();
        wahl->addTo(*command, withOutput);
        command->callback([&call, work, wahl] {
            call.needsDatabase = true;
            call.run = reported([work, wahl](Programm& p) { return work(p, *wahl); });
        });
        return std::pair(command, wahl);
    };
    const auto [reg, regWahl] = add("reg", "REG-Datei, in der Form, die in den Optionen steht; mehrere Tipps als Liste", exportReg);
    reg->add_flag("--checked", regWahl->checked, "Im geprüften Format (Version 5.00, UTF-16), das jedes Programm richtig einliest");
    reg->add_flag("--regedit4", regWahl->regedit4, "Das geprüfte Format als REGEDIT4 (Windows-1252)");
    add("adm", "Richtlinien-Vorlage (ADM)", exportAdm);
    add("admx", "Richtlinien-Vorlage (ADMX mit ADML)", exportAdmx, false);
    add("reg-add", "Befehlsdatei für Windows (.cmd), die die Werte mit reg add setzt", exportRegAdd);
    const auto [pol, polWahl] = add("polfile", "Registry.pol mit den Werten unter HKCU oder HKLM", exportPolfile);
    pol->add_option("--class", polWahl->klasse, "user oder machine, wenn Werte unter beiden Hauptschlüsseln liegen")->check(CLI::IsMember({"user", "machine"}));
}

}  // namespace brenvik::cli
