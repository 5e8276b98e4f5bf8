// Fresh directories mapped as fixed drives L: (components of 255) and S: (12), removable R:
// and the share \\server\share, with the path class's one-entry volume cache emptied.
#pragma once

#include <gtest/gtest.h>

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "gvlib/path/GVPath.h"
#include "gvlib/platform/volumes.h"

class VolumeFixture : public ::testing::Test {
protected:
    void SetUp() override {
        root_ = ::testing::TempDir() + "gvlib_path_XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(&root_[0]));
        for (char const* dir : {"long", "short", "removable", "share", "spare"})
            MakeDir(dir);
        gvplatform::ResetVolumes();
        gvplatform::MapDrive('L', root_ + "/long", Options(gvplatform::kDriveFixed, 255));
        gvplatform::MapDrive('S', root_ + "/short", Options(gvplatform::kDriveFixed, 12));
        gvplatform::MapDrive('R', root_ + "/removable", Options(gvplatform::kDriveRemovable, 255));
        gvplatform::MapShare("\\\\server\\share", root_ + "/share", Options(gvplatform::kDriveRemote, 255));
        // Asking for a fixed root no test uses evicts what an earlier test left in the cache.
        gvplatform::MapDrive('Z', root_ + "/spare", Options(gvplatform::kDriveFixed, 255));
        CGVPath("Z:\\").GetVolumeMaxComponent();
        gvplatform::UnmapDrive('Z');
    }

    void TearDown() override {
        gvplatform::ResetVolumes();
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    static gvplatform::VolumeOptions Options(uint32_t type, uint32_t maxComponent) {
        gvplatform::VolumeOptions options;
        options.driveType = type, options.maxComponentLength = maxComponent;
        return options;
    }

    /// The host path of `relative` under the fixture's root: "long/dir" is L:\dir.
    std::string Host(std::string const& relative) const { return root_ + "/" + relative; }

    void MakeDir(std::string const& relative) const { std::filesystem::create_directories(Host(relative)); }

    void Touch(std::string const& relative) const { std::ofstream(Host(relative)) << "x"; }

    std::string root_;
};
