// Choosing the guest by the identifier a script gives: any letter case and the older names are
// taken and stored in the list's spelling; a name not in the list, or of a family the product
// does not offer, is refused and changes nothing.
#include "core/config/GuestChoice.h"

#include "TestSupport.h"
#include "core/config/ProductTables.h"

using namespace arden;

TEST(GuestChoice, ByIdentifierWithinTheProductsFamilies) {
    VmConfiguration c = VmConfiguration::newMachine("g", "/vms/g/", "New VM", 1);
    for (const auto& [given, stored] : {std::pair{"RHEL4", "rhel4"}, {"linux", "otherlinux"}}) {
        EXPECT_FALSE(selectGuestById(c, given)) << given;
        EXPECT_EQ(c.product.guestId, stored);
    }
    c.retarget(kWorkstation, 1);
    EXPECT_EQ(test::shown(selectGuestById(c, "solaris10")),
              "Invalid Guest Operating System: Workstation 4.0x does not offer Solaris guests; it offers Microsoft "
              "Windows, Linux, NetWare and Other.");
    EXPECT_EQ(test::shown(selectGuestById(c, "amigaos")),
              "Invalid Guest Operating System: \"amigaos\" is not in the guest list; give the guest's identifier as a "
              "configuration file names it, such as winXPPro or otherlinux.");
    EXPECT_EQ(c.product.guestId, "otherlinux");
    c.retarget(kWorkstation, 9);  // a version the platform lacks stands for its last, which has Solaris
    EXPECT_FALSE(selectGuestById(c, "solaris10"));
}
