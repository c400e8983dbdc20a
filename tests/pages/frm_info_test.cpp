// The version box tells what the build says of itself, with or without a machine.
// A wrong number here sends a technician to the wrong release.
#include "pages/shell_pages/frm_info.h"

#include <gtest/gtest.h>

#include "program_version.h"
#include "shell/main_window.h"
#include "support/world.h"

namespace kestrel {
namespace {

TEST(FrmInfo, ShowsTitleAndVersionFromTheMenu) {
    testing::World world;
    world.start();
    MDIForm1().entry("mnuVer").UserClick();
    auto* page = dynamic_cast<FrmInfo*>(FindLoadedPage("FrmInfo"));
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->Frame1.Caption.get(), "Program Info");
    EXPECT_EQ(page->Label1[0].Caption.get(), "Kestrel");
    EXPECT_EQ(page->Label1[1].Caption.get(), std::string("Rev.") + ProgramVersion);
    world.run(2000);
    EXPECT_EQ(testing::UnsettledRecords(), 0) << "it subscribes to nothing";
}

}  // namespace
}  // namespace kestrel
