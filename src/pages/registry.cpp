// The pages that there are.
// See registry.h.
#include "pages/registry.h"

#include "pages/beverage/frm_dosi.h"
#include "pages/beverage/frm_inter.h"
#include "pages/beverage/frm_presel.h"
#include "pages/beverage/frm_pro_uni.h"
#include "pages/beverage/frm_tempi.h"
#include "pages/controls/frm_controls.h"
#include "pages/sales/frm_totali.h"

namespace kestrel {

namespace {

template <class P>
std::unique_ptr<Page> make() {
    return std::make_unique<P>();
}

}  // namespace

PageRegistry AllPages() {
    return {
        {"FrmInter", make<FrmInter>},
        {"FrmProUni", make<FrmProUni>},
        {"FrmPresel", make<FrmPresel>},
        {"FrmTempi", make<FrmTempi>},
        {"FrmDosi", make<FrmDosi>},
        {"FrmTotali", make<FrmTotali>},
        {"FrmControls", make<FrmControls>},  // in no menu: opened by name
    };
}

}  // namespace kestrel
