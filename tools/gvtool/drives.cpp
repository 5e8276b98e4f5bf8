// The --drive option and the files the tool reads and writes.
#include <sstream>

#include <gvlib/gvlib.h>

#include "gvtool/commands.h"

namespace gvtool {

Status& Result() {
    static Status status = kOk;
    return status;
}

void MapDrives(std::vector<std::string> const& drives) {
    for (std::string const& drive : drives) {
        // LETTER=HOSTDIR[,removable|fixed|remote][,max=N]
        if (drive.size() < 3 || drive[1] != '=' || !std::isalpha(static_cast<unsigned char>(drive[0])))
            throw Failure{"--drive " + drive + ": expected LETTER=HOSTDIR[,removable|fixed|remote][,max=N]"};
        std::istringstream fields(drive.substr(2));
        std::string directory, field;
        std::getline(fields, directory, ',');
        gvplatform::VolumeOptions options;
        while (std::getline(fields, field, ',')) {
            if (field == "removable")
                options.driveType = gvplatform::kDriveRemovable;
            else if (field == "fixed")
                options.driveType = gvplatform::kDriveFixed;
            else if (field == "remote")
                options.driveType = gvplatform::kDriveRemote;
            else if (field.rfind("max=", 0) == 0 && field.size() > 4 &&
                     field.find_first_not_of("0123456789", 4) == std::string::npos && field.size() < 14)
                options.maxComponentLength = static_cast<uint32_t>(std::stoul(field.substr(4)));
            else if (field.rfind("max=", 0) == 0)
                throw Failure{"--drive " + drive + ": max= takes a whole number of characters, not '" +
                              field.substr(4) + "'"};
            else
                throw Failure{"--drive " + drive + ": unknown field '" + field +
                              "' (use removable, fixed, remote or max=N)"};
        }
        gvplatform::MapDrive(drive[0], directory, options);
    }
}

std::string WindowsForm(std::string const& path) {
    if (path.empty() || path[0] != '/')
        return path;
    std::string windows = gvplatform::HostToWindowsPath(path);
    if (windows.empty())
        throw Failure{path + ": lies on no mapped volume"};
    return windows;
}

}  // namespace gvtool
