// Counts the values of a page's first full set, so that the page can stay locked until it has them.
// A value that comes twice counts twice.
#pragma once

namespace kestrel {

class ArrivalCount {
  public:
    explicit ArrivalCount(int limit) : limit_(limit) {}

    /// The page has yet to get its first set.
    bool Loading() const { return loading_; }
    void restart() {
        loading_ = true;
        arrived_ = 0;
    }
    /// One more value of the set; does nothing once loading has ended.
    void count() {
        if (loading_) ++arrived_;
    }
    /// Whether the set is now complete. True once: loading has then ended.
    bool completes() {
        if (!loading_ || arrived_ < limit_) return false;
        loading_ = false;
        return true;
    }

  private:
    int limit_;
    int arrived_ = 0;
    bool loading_ = true;
};

}  // namespace kestrel
