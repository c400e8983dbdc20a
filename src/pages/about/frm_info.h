// Version box: what program this is, and its version.
// It has no link to the boards.
#pragma once

#include "link/page.h"

namespace kestrel {

class FrmInfo : public Page {
  public:
    FrmInfo();

    Picture Picture1{"kestrel"};  ///< the program's icon
    Frame Frame1;
    ControlArray<Label, 2> Label1;  ///< title and version
    Label Toolkit, Licence;

    Layout Arrange() override;
    void Form_Load() override;
    void SLabel_Change(int /*n*/, ParamValue /*value*/) override {}
};

}  // namespace kestrel
