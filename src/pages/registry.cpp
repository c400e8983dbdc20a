// The pages that there are.
// See registry.h.
#include "pages/registry.h"

#include "pages/beverage/frm_inter.h"
#include "pages/beverage/frm_presel.h"
#include "pages/beverage/frm_pro_uni.h"
#include "pages/beverage/frm_tempi.h"
#include "pages/climate/frm_grafico.h"
#include "pages/climate/frm_orologio.h"
#include "pages/climate/frm_temperatura.h"
#include "pages/controls/frm_controls.h"
#include "pages/machine/frm_azione.h"
#include "pages/machine/frm_conmac.h"
#include "pages/sales/frm_totali.h"
#include "pages/shell_pages/frm_info.h"
#include "pages/shell_pages/frm_password.h"
#include "pages/test/frm_allarmi.h"
#include "pages/test/frm_in_out.h"
#include "pages/test/frm_schema.h"
#include "pages/test/frm_test_cedar.h"

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
        {"FrmControls", make<FrmControls>},  // in no menu: opened by name
        {"FrmTempi", make<FrmTempi>},
        {"FrmTotali", make<FrmTotali>},
        {"FrmInOut", make<FrmInOut>},
        {"FrmTestCedar", make<FrmTestCedar>},
        {"FrmSchema", make<FrmSchema>},
        {"FrmAllarmi", make<FrmAllarmi>},
        {"FrmConMac", make<FrmConMac>},
        {"FrmAzione", make<FrmAzione>},
        {"FrmPassword", make<FrmPassword>},
        {"FrmTemperatura", make<FrmTemperatura>},
        {"FrmGrafico", make<FrmGrafico>},
        {"FrmOrologio", make<FrmOrologio>},
        {"FrmInfo", make<FrmInfo>},
    };
}

}  // namespace kestrel
