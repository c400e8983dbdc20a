// The pages that there are.
// See registry.h.
#include "pages/registry.h"

#include "pages/beverage/frm_tempi.h"
#include "pages/controls/frm_controls.h"
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

PageRegistry AllPages() {
    return {
        {"FrmControls", make<FrmControls>},  // in no menu: opened by name
        {"FrmTempi", make<FrmTempi>},       {"FrmPagamento", make<FrmPagamento>}, {"FrmPrezzi", make<FrmPrezzi>},
        {"FrmSconti", make<FrmSconti>},     {"FrmAssSel", assigns(FrmAssSel)},    {"FrmAssSet", assigns(FrmAssSet)},
        {"FrmTotali", make<FrmTotali>},     {"FrmBattute", counts(FrmBattute)},   {"FrmGratis", counts(FrmGratis)},
        {"FrmBricco", counts(FrmBricco)},   {"FrmProva", counts(FrmProva)},       {"FrmMonete", counts(FrmMonete)},
        {"FrmMDBaudit", make<FrmMDBaudit>}, {"FrmCancella", make<FrmCancella>},
    };
}

}  // namespace kestrel
