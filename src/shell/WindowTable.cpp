// Which window showWindow opens for which request.
#include <type_traits>

#include "shell/QtPort.h"
#include "shell/tipwindows/frmBVK_Bearbeiten.h"
#include "shell/tipwindows/frmBVK_BootINI.h"
#include "shell/tipwindows/frmBVK_Datentyp.h"
#include "shell/tipwindows/frmBVK_PWAbfrage.h"
#include "shell/tipwindows/frmBVK_Parameter.h"
#include "shell/tipwindows/frmBVK_REGEdit.h"
#include "shell/tipwindows/frmBVK_RegName.h"
#include "shell/tipwindows/frmBVK_TippFileSave.h"
#include "shell/windows/frmBVK_OSErkennung.h"
#include "shell/windows/frmBVK_Optionen.h"
#include "shell/windows/frmBVK_RegBrowse.h"
#include "shell/windows/frmBVK_Suchen.h"

namespace brenvik {
namespace {

template <class Window, class Request> void add(QtPort& port, const char* name) {
    port.registerWindow(QLatin1String(name), [](QtPort& own, QWidget* parent, WindowRequest& request) {
        auto* record = dynamic_cast<Request*>(&request);
        if (!record) return own.tell("Unpassende Anfrage für das Fenster " + std::string(request.windowName()), box::Critical);
        if constexpr (std::is_constructible_v<Window, UserPort&, Request&, QWidget*>) {
            Window(own, *record, parent).exec();
        } else {
            Window(*record, parent).exec();
        }
    });
}

}  // namespace

void registerOwnWindows(QtPort& port) {
    add<frmBVK_Datentyp, DatentypRequest>(port, "frmBVK_Datentyp");
    add<frmBVK_Bearbeiten, BearbeitenRequest>(port, "frmBVK_Bearbeiten");
    add<frmBVK_BootINI, BootINIRequest>(port, "frmBVK_BootINI");
    add<frmBVK_Suchen, SuchenRequest>(port, "frmBVK_Suchen");
    add<frmBVK_Optionen, OptionenRequest>(port, "frmBVK_Optionen");
    add<frmBVK_PWAbfrage, PWAbfrageRequest>(port, "frmBVK_PWAbfrage");
    add<frmBVK_RegBrowse, RegBrowseRequest>(port, "frmBVK_RegBrowse");
    add<frmBVK_RegName, RegNameRequest>(port, "frmBVK_RegName");
    add<frmBVK_REGEdit, REGEditRequest>(port, "frmBVK_REGEdit");
    add<frmBVK_TippFileSave, TippFileSaveRequest>(port, "frmBVK_TippFileSave");
    add<frmBVK_Parameter, ParameterRequest>(port, "frmBVK_Parameter");
    add<frmBVK_OSErkennung, OSErkennungRequest>(port, "frmBVK_OSErkennung");
}

}  // namespace brenvik
