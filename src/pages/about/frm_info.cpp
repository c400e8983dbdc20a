// Version box: what program this is, and its version.
#include "pages/about/frm_info.h"

#include "link/value_helpers.h"
#include "platform/platform.h"
#include "program_version.h"

namespace kestrel {

FrmInfo::FrmInfo() : Page("FrmInfo") {
    Caption = ProgramTitle;
    Frame1.Caption = "Program Info";
}

Layout FrmInfo::Arrange() {
    return Row{Canvas(Picture1, {}), Group(Frame1, Column{Label1[0], Label1[1], Toolkit, Licence})};
}

void FrmInfo::Form_Load() {
    Label1[1].Caption = "Rev." + std::to_string(ProgramMajor) + "." + std::to_string(ProgramMinor) + "." +
                        std::to_string(ProgramRevision);
    Label1[0].Caption = ProgramTitle;
    Toolkit.Caption = platform().toolkit();
    Licence.Caption = std::string(ProgramLicence) + " License";
    CenterPage(*this);
}

}  // namespace kestrel
