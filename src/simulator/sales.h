// Customers: every 20 to 60 s somebody buys something, and the counters and the money grow by it.
// Nothing is sold while a board is in test mode or the machine is busy.
#pragma once

#include "simulator/random.h"
#include "simulator/world.h"

namespace kestrel::simulator {

class Sales {
  public:
    explicit Sales(World& world);

  private:
    struct Product {
        Board board;
        int index;  // selection or sector, from 0
    };

    void waitForCustomer();
    bool canSell() const;
    std::optional<Product> choose();
    void sell(Product product);
    std::uint32_t priceOf(Product product, std::uint32_t& discount) const;
    bool isFree(Product product) const;
    void countExtras(Product product);
    void collect(std::uint32_t amount);
    std::uint32_t insertCoins(std::uint32_t amount);

    World& world_;
    Random random_;
};

}  // namespace kestrel::simulator
