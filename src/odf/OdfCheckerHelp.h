#pragma once

#include <array>

namespace quillbay {

struct HelpTopic {
    const char* entry;
    const char* text;
};

inline constexpr char kHelpPrompt[] =
    "Select something from the dropdown list to get a better description of it.";

/// The topics of the ODF checker in the order of its list.
inline constexpr auto kOdfCheckerHelp = std::to_array<HelpTopic>({
    {"General",
     "Select a base odf folder (like the one in T2) and then select the things you want to have checked for. "
     "After that, click start. If there is something that is incorrect, the odf will be displayed and you "
     "will "
     "be taken to the offending line so you can edit it."},
    {"Folders",
     "The folders that will be searched are: odf\\other, odf\\commands, odf\\ships, odf\\stations, "
     "odf\\special_weapons, odf\\weapons, odf\\weapons\\phasers, odf\\weapons\\photons, and "
     "odf\\weapons\\pulse."},
    {"Checkboxes",
     "These are fairly self-explanitory. If you remove the checkmark, then it won't check for that in the "
     "odfs. Otherwise, it will. Note: You can safely change what is checked for during the checking "
     "process."},
    {"----------------", kHelpPrompt},
    {"Quotation marks", "An odd number of quotation marks in a line means that a string in it is not closed. "
                        "For example, 'race = "
                        "\"whatever\"\"' has one quotation mark too many."},
    {"Invalid #include",
     "This checks the files for the #include section and then checks the odf it references to and makes sure "
     "it actually exists."},
    {"Invalid race",
     "This will look in the other\\race.odf folder and find the races. It will then check those files to see "
     "what they are actually named. Then, it will check the 'whatever' in 'race = \"whatever\"' to see if it "
     "exists in the race list."},
    {"Uneven weapons",
     "In odfs with weapons, there is a line that begins like 'weapon1 = \"insert odf here\"' and then there "
     "is "
     "another line that says 'weaponHardpoints1 = \"insert hardpoints here\"'. This checks to see if both "
     "exist."},
    {"Weapon odfs",
     "In odfs with weapons, there is a line that begins like 'weapon1 = \"insert odf here\"'. This checks to "
     "see if 'insert odf here' exists."},
    {"Missing tooltips",
     "If there is a 'tooltip =' in the odf, this will check to make sure it is not 'tooltip = \"\"', "
     "'tooltip = ', 'tooltip = \"WRITEME\"', or 'tooltip = \"WRITE ME\"'."},
    {"Builditems",
     "In odfs with a line that starts 'builditem(insert number) = \"insert odf name\"', this checks for the "
     "existance of instert odf name."},
    {"Missing v. tooltips", "Read 'Missing tooltips'."},
});

} // namespace quillbay
