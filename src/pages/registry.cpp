// The pages that there are.
// See registry.h.
#include "pages/registry.h"

#include "pages/beverage/frm_tempi.h"
#include "pages/climate/frm_grafico.h"
#include "pages/climate/frm_orologio.h"
#include "pages/climate/frm_temperatura.h"
#include "pages/machine/frm_azione.h"
#include "pages/machine/frm_conmac.h"
#include "pages/machine/frm_opzioni.h"
#include "pages/sales/frm_totali.h"
#include "pages/shell_pages/frm_info.h"
#include "pages/shell_pages/frm_password.h"

namespace kestrel {

namespace {

template <class P>
std::unique_ptr<Page> make() {
    return std::make_unique<P>();
}

}  // namespace

PageRegistry AllPages() {
    return {
        {"FrmConMac", make<FrmConMac>},
        {"FrmTempi", make<FrmTempi>},
        {"FrmTotali", make<FrmTotali>},
        {"FrmOpzioni", make<FrmOpzioni>},
        {"FrmAzione", make<FrmAzione>},
        {"FrmPassword", make<FrmPassword>},
        {"FrmTemperatura", make<FrmTemperatura>},
        {"FrmGrafico", make<FrmGrafico>},
        {"FrmOrologio", make<FrmOrologio>},
        {"FrmInfo", make<FrmInfo>},
    };
}

}  // namespace kestrel
