// Every exchange on the line as it is seen from this end, decoded and judged.
// The words of a line are those of the simulated machine, which sees the same exchange from the other end.
#pragma once

#include <string_view>

#include "ctl/context.h"
#include "link/observer.h"

namespace kestrel::ctl {

class Traffic : public LinkObserver {
  public:
    explicit Traffic(Context& context) : context_(context) {}

    void frameSent(const Bytes& frame) override;
    void replyJudged(const Bytes& reply, bool good) override;
    void exchangeClosed() override;
    /// Counts, rate and error rate.
    void conclude();

  private:
    void tell(const Bytes& reply, std::string_view verdict);

    Context& context_;
    const double begun_ = context_.clock();
    double first_ = 0;  ///< when the first frame went out
    double sent_ = 0;
    Bytes frame_;        ///< that is not answered yet
    int parameter_ = 0;  ///< of which; 0: it asks who is there
    long exchanges_ = 0, bad_ = 0, silent_ = 0;
};

}  // namespace kestrel::ctl
