#pragma once
// The generated configuration the benchmarks load: the size of a file a long-lived machine
// collects over the years.
#include <sstream>
#include <string>

namespace arden::bench {

// A configuration of `lines` lines as a long-lived machine collects them: devices on every
// node, shared folders, and many keys the editor keeps as they stand.
inline std::string bigConfiguration(int lines) {
    std::ostringstream s;
    s << ".encoding = \"UTF-8\"\r\ndisplayName = \"Benchmark\"\r\nconfig.version = \"8\"\r\nvirtualHW.version = \"4\"\r\n"
         "guestOS = \"winxppro\"\r\nmemsize = \"512\"\r\nnumvcpus = \"2\"\r\n";
    int written = 7;
    for (int c = 0; c < 4; ++c) {
        s << "scsi" << c << ".present = \"TRUE\"\r\nscsi" << c << ".virtualDev = \"lsilogic\"\r\n";
        written += 2;
        for (int n = 0; n < 7; ++n) {
            s << "scsi" << c << ":" << n << ".present = \"TRUE\"\r\nscsi" << c << ":" << n << ".fileName = \"disk" << c << n
              << ".vmdk\"\r\nscsi" << c << ":" << n << ".mode = \"persistent\"\r\n";
            written += 3;
        }
    }
    for (int i = 0; i < 3; ++i) {
        s << "ethernet" << i << ".present = \"TRUE\"\r\nethernet" << i << ".connectionType = \"nat\"\r\nethernet" << i
          << ".generatedAddress = \"00:0c:29:00:00:0" << i << "\"\r\n";
        written += 3;
    }
    for (int i = 0; written < lines; ++i, ++written) {
        if (i % 10 == 0) s << "# note " << i << "\r\n";
        else s << "guestinfo.key" << i << " = \"value number " << i << " with some text\"\r\n";
    }
    return s.str();
}

}  // namespace arden::bench
