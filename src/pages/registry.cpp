// The pages that there are.
#include "pages/registry.h"

#include "pages/about/frm_info.h"
#include "pages/beverage/frm_dosi.h"
#include "pages/beverage/frm_inter.h"
#include "pages/beverage/frm_presel.h"
#include "pages/beverage/frm_pro_uni.h"
#include "pages/beverage/frm_tempi.h"
#include "pages/climate/frm_grafico.h"
#include "pages/climate/frm_orologio.h"
#include "pages/climate/frm_temperatura.h"
#include "pages/diagnostics/frm_allarmi.h"
#include "pages/diagnostics/frm_in_out.h"
#include "pages/diagnostics/frm_schema.h"
#include "pages/diagnostics/frm_test_cedar.h"
#include "pages/machine/frm_azione.h"
#include "pages/machine/frm_con_mac.h"
#include "pages/machine/frm_opzioni.h"
#include "pages/machine/frm_password.h"
#include "pages/payment/frm_pagamento.h"
#include "pages/payment/frm_prezzi.h"
#include "pages/payment/frm_sconti.h"
#include "pages/payment/price_assignment.h"
#include "pages/sales/frm_cancella.h"
#include "pages/sales/frm_mdb_audit.h"
#include "pages/sales/frm_totali.h"
#include "pages/sales/vend_counters.h"

namespace kestrel {

namespace {

template <class P>
std::unique_ptr<Page> make() {
    return std::make_unique<P>();
}

/// Pages that are one class on several tables.
PageRegistry::mapped_type assigns(const AssignmentDesign& design) {
    return [&design] { return std::make_unique<PriceAssignment>(design); };
}

PageRegistry::mapped_type counts(const CounterDesign& design) {
    return [&design] { return std::make_unique<VendCounters>(design); };
}

}  // namespace

/// In the order of the menu.
PageRegistry AllPages() {
    return {
        {"FrmConMac", make<FrmConMac>},
        {"FrmInter", make<FrmInter>},
        {"FrmProUni", make<FrmProUni>},
        {"FrmPresel", make<FrmPresel>},
        {"FrmTempi", make<FrmTempi>},
        {"FrmDosi", make<FrmDosi>},
        {"FrmPagamento", make<FrmPagamento>},
        {"FrmPrezzi", make<FrmPrezzi>},
        {"FrmSconti", make<FrmSconti>},
        {"FrmAssSel", assigns(FrmAssSel)},
        {"FrmAssSet", assigns(FrmAssSet)},
        {"FrmTotali", make<FrmTotali>},
        {"FrmBattute", counts(FrmBattute)},
        {"FrmGratis", counts(FrmGratis)},
        {"FrmBricco", counts(FrmBricco)},
        {"FrmProva", counts(FrmProva)},
        {"FrmMonete", counts(FrmMonete)},
        {"FrmMDBaudit", make<FrmMDBaudit>},
        {"FrmCancella", make<FrmCancella>},
        {"FrmOpzioni", make<FrmOpzioni>},
        {"FrmAzione", make<FrmAzione>},
        {"FrmPassword", make<FrmPassword>},
        {"FrmTemperatura", make<FrmTemperatura>},
        {"FrmGrafico", make<FrmGrafico>},
        {"FrmOrologio", make<FrmOrologio>},
        {"FrmInOut", make<FrmInOut>},
        {"FrmTestCedar", make<FrmTestCedar>},
        {"FrmSchema", make<FrmSchema>},
        {"FrmAllarmi", make<FrmAllarmi>},
        {"FrmInfo", make<FrmInfo>},
    };
}

}  // namespace kestrel
