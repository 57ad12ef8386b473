// The sample scenes: their pictures as approved, and the values that they show.
#include <filesystem>
#include <map>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/drawing/draw.h"
#include "host/output/dump.h"
#include "host/system/files.h"

namespace {

namespace fs = std::filesystem;

// Scenes, and all the lines of text that each of them shows. Found by hand.
const std::pair<const char*, const char*> kShown[] = {
    // tan 60 degrees = 43.30127 / 25 = 34.641016 / 20; 360 - 60; tan 50 degrees = 68.944 / 57.85089
    {"angle_beyond angle_beyond_3d angle_gap angle_gap_3d angle_opposite angle_opposite_3d", "60°"},
    {"angle_reflex angle_reflex_3d", "300° 60°"},
    {"angle_meeting angle_meeting_3d", "50°"},
    // x from 30 to 90; z from 30 to 75; x from 15 to 85; z from 12 to 54; 40 along and 30 up
    {"axis_to_axis", "60.00"},
    {"centre_to_centre", "45.00"},
    {"plane_to_plane", "70.00"},
    {"point_to_face", "42.00"},
    {"two_points", "50.00"},
    // A quarter of radius 40 is 20 pi, a leg of 60; 3/4 of radius 30 is 45 pi; half of 25 is 25 pi.
    {"bracket_arc_iso bracket_arc_top", "62.83 60.00"},
    {"eye_arc_iso eye_arc_top", "141.37"},
    {"section_arc_front section_arc_iso", "78.54 45.00"},
    // A plate of 120 by 70 with steps of 40, their heights 30, 50 and 70
    {"edge_lengths_iso edge_lengths_top", "120.00 40.00 40.00 30.00 70.00"},
    {"stepped_plate", "30.00 50.00 70.00 80.00"},
    // A rim of radius 60, a bore of 20, holes of 5; a hole at (40, 25) from the corner
    {"flange_diameters_iso flange_diameters_top", "⌀120.00 ⌀40.00 ⌀10.00"},
    {"flange_radii_iso flange_radii_top", "R60.00 R20.00 R5.00 R5.00"},
    {"hole_to_edge", "40.00 25.00"},
    // Walls at -30 and 30, a floor of 20, a height of 60
    {"housing_section_front housing_section_iso", "60.00 20.00 60.00"},
    {"framed_dimension", "64.00"},
    {"note", "REAM 20 H7 THROUGH BREAK EDGES 0.5"},
    // x from 15 to 75, and to 95 after the update, which leaves the old text
    {"update", "60.00 60.00 80.00"},
    // The designer's own values
    {"mounting_plate_circles", "⌀35.00 ⌀35.00 ⌀35.00 ⌀35.00 ⌀25.00 R50.00"},
    {"mounting_plate_corner", "75.00 50.00 150.00 ⌀35.00 45° 100.00"},
    {"mounting_plate_distances",
     "800.00 450.00 500.00 400.00 500.00 225.00 125.00 107.5 107.5 50.00"},
    {"mounting_plate_slot", "40.00"},
    {"mounting_plate_drill", "118°"},
    {"mounting_plate_edges", "150.00 100.00 150.00 100.00 250.00 1000.00"},
    {"mounting_plate_foot", "50.00 75.00 ⌀35.00 R50.00 R25.00"},
    {"mounting_plate_front", "60.00 30.00 25.00 50.00 50.00 ⌀20.00 ⌀20.00"},
    {"mounting_plate_hexagon", "120° 120° R50.00 25.00"},
    {"mounting_plate_lettering", "52.63 29.7 29.65 13.75 16.87 9.53 10.35"},
    {"mounting_plate_lettering_angles", "42.62° 42.76°"},
    {"mounting_plate_lettering_edges", "17.11 17.76 23.54 9.61 13.58"},
    {"mounting_plate_lettering_fillets", "R0.62 R0.81 R1.64 R2.12 R2.12"},
    {"mounting_plate_lettering_radii", "R4.89 R5.28 R6.29 R6.82 R6.85"},
    {"mounting_plate_notches", "60° 60° 30° 30.00 R10.00 162.26"},
    {"mounting_plate_pocket", "50.00 100.00 65.00 100.00 ⌀25.00"},
    {"mounting_plate_recesses", "85.00 85.00 25.00"},
};

/// The scenes' texts by name.
std::map<std::string, std::string> scenes() {
    std::map<std::string, std::string> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(DORVALE_SCENES)) {
        found[entry.path().stem().string()] = host::readSceneFile(entry.path());
    }
    return found;
}

TEST(Gallery, ShowsWhatIsMeasured) {
    std::map<std::string, std::string> expected;
    for (const auto& [names, lines] : kShown) {
        std::istringstream list(names);
        for (std::string name; list >> name;) {
            expected[name] = lines;
        }
    }
    for (const auto& [name, scene] : scenes()) {
        std::string shown;
        const auto dump = nlohmann::json::parse(host::dumpScene(scene));
        for (const auto& annotation : dump["annotations"]) {
            for (const auto& block : annotation["annotation"]["textBlocks"]) {
                for (const auto& line : block["texts"]) {
                    shown += shown.empty() ? "" : " ";
                    shown += line["text"].get<std::string>();
                }
            }
        }
        EXPECT_EQ(shown, expected[name]) << name;
    }
    EXPECT_EQ(scenes().size(), expected.size());
}

TEST(Gallery, LooksAsApproved) {
#ifdef _WIN32
    GTEST_SKIP() << "pictures are compared where they were approved";
#endif
    std::size_t approved = 0;
    for (const auto& [name, scene] : scenes()) {
        const fs::path golden = fs::path(DORVALE_GOLDEN) / (name + ".svg");
        const std::string picture = host::drawScene(scene);
        if (fs::exists(golden) && host::readSceneFile(golden) == picture) {
            ++approved;
            continue;
        }
        const fs::path drawn = fs::path(DORVALE_DRAWN) / golden.filename();
        fs::create_directories(drawn.parent_path());
        host::writeFile(drawn, picture);
        ADD_FAILURE() << drawn << " is not " << golden
                      << "\nIf it is right: ./dev gallery --approve";
    }
    const auto goldens = std::distance(fs::directory_iterator(DORVALE_GOLDEN), {});
    EXPECT_EQ(static_cast<std::size_t>(goldens), approved) << "a picture without a scene";
}

} // namespace
