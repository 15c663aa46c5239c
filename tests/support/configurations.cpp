#include "tests/support/configurations.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <stdexcept>

namespace {

/// A body of these items, which bars or lines divide, each indented by its depth.
std::string laidOut(std::string text) {
    std::ranges::replace(text, '|', '\n');
    std::istringstream items(text);
    std::string body;
    std::size_t depth = 0;
    for (std::string item; std::getline(items >> std::ws, item);) {
        depth -= item == "}" ? 1 : 0;
        body += std::string(depth, ' ') + item + '\n';
        depth += item.back() == '{' ? 1 : 0;
    }
    return body;
}

const std::string fullMeta = R"(meta{
    user_defined_model_pathname="C:\Plotters\PMP Files\no such.pmp
    user_defined_model_basename="C:\Plotters\base.pmp
    driver_pathname="hpgl.hdi| driver_version="6.1| driver_tag_line="Driver
    toolkit_version=1| driver_type=-3| canonical_family_name="Family
    show_custom_first=TRUE| truetype_as_text=FALSE| canonical_model_name="Model
    localized_family_name="Familie| localized_model_name="Modell| file_only=TRUE
    model_abilities="500005500500505555000005550000000550000500000500000
    udm_description="udm| win_device_name="\\server\plotter| win_driver_name="Driver name
    short_net_name="short| friendly_net_name="friendly| dm_driver_version=1025
    default_system_cfg=FALSE| platform="x64| locale="en
    config_description="described| config_autospool=TRUE
})";

const std::string bareMeta = R"(meta{
    user_defined_model_pathname="| user_defined_model_basename="| driver_pathname="
    driver_version="| driver_tag_line="| toolkit_version=0| driver_type=0
    canonical_family_name="| show_custom_first=FALSE| truetype_as_text=TRUE
    canonical_model_name="| localized_family_name="| localized_model_name="| file_only=FALSE
    model_abilities="| udm_description="| short_net_name="| friendly_net_name="
})";

const std::string paperLists = R"(
    size{
        0{
            caps_type=5| name="UserDefinedMetric (100.00 x 200.00MM)| localized_name="Long
            media_description_name="D| media_group=15| landscape_mode=TRUE
        }
    }
    description{
        0{
            caps_type=3| name="D| media_bounds_urx=100.000000| media_bounds_ury=200.000000
            printable_bounds_llx=1.000000| printable_bounds_lly=2.000000
            printable_bounds_urx=97.000000| printable_bounds_ury=196.000000
            printable_area=18624.000000| dimensional=FALSE
        }
    }
)";

}  // namespace

const std::string fullConfiguration = laidOut(fullMeta + R"(
media{
    selection_method=1| type="roll| dm_orientation=2
    actual_printable_bounds_llx=5.500000| actual_printable_bounds_lly=6.500000
    actual_printable_bounds_urx=200.250000| actual_printable_bounds_ury=290.750000
    number_of_copies=3
    size{
        name="ISO_A4_(210.00_x_297.00_MM)| group=15| landscape_mode=TRUE
        longplot_reduction=0.500000| dm_scale=50
        media_description{
            printable_bounds_llx=5.000000| printable_bounds_lly=6.000000
            printable_bounds_urx=205.000000| printable_bounds_ury=291.000000
            printable_area=57000.000000| dimensional=FALSE
            media_bounds{| urx=210.000000| ury=297.000000| }
        }
    }
    destination{| name="Default| collating_type=1| collating_name="Regular| }
    custom_papers{
        0{
            global_name="Roll| local_name="Rolle| units=0| width=36.000000| height=100.000000
            left=0.100000| bottom=0.200000| right=0.300000| top=0.400000
        }
    }
}
io{| type=1| pathname="LPT1| allsysvalid=TRUE| plot_to_file=TRUE| }
res_color_mem{
    name="colors| num_colors=16777216| color_depth=24| num_undithered_colors=-1
    color_system=1| dm_color=2| icm_method=2| icm_intent=3| ism_max=0| ole_max=1| hard_soft=2
    preference=75| lines_overwrite=FALSE| color_mono=TRUE
    resolution{
        name="600x300_Best| phys_resolution_x=600.0| phys_resolution_y=300.0
        addr_resolution_x=601.5| addr_resolution_y=301.5
        effective_resolution_x=602.0| effective_resolution_y=302.0
    }
}
custom{
    0{| name="Odd| value=12abc| }
    1{| name="dmSize| value=220| }
    2{| name="RawPrivateDeviceData| value=\00FFaB\| }
    3{| name="Note| value="text| }
    4{| name="dmSize| value="a text, too| }
    5{| name="PdfExport| value=FALSE| }
})");

const std::string bareConfiguration = laidOut(bareMeta + R"(
media{
    selection_method=2| type="| dm_orientation=1
    actual_printable_bounds_llx=0.000000| actual_printable_bounds_lly=0.000000
    actual_printable_bounds_urx=0.000000| actual_printable_bounds_ury=0.000000
    number_of_copies=1
    size{
        name="| group=0| landscape_mode=FALSE
        media_description{
            printable_bounds_llx=0.000000| printable_bounds_lly=0.000000
            printable_bounds_urx=0.000000| printable_bounds_ury=0.000000
            printable_area=0.000000| dimensional=TRUE
            media_bounds{| urx=0.000000| ury=0.000000| }
        }
    }
}
io{| type=2| pathname="| allsysvalid=FALSE| plot_to_file=FALSE| }
res_color_mem{
    name="| num_colors=256| color_depth=8| num_undithered_colors=256| color_system=0| dm_color=1
    ism_max=6| ole_max=6| preference=50
    resolution{
        name="| phys_resolution_x=1.0| phys_resolution_y=1.0| addr_resolution_x=1.0
        addr_resolution_y=1.0| effective_resolution_x=1.0| effective_resolution_y=1.0
    }
})");

const std::string fullParameters = laidOut(fullMeta + R"(
mod{
    media{
        abilities="500| caps_state="000| ui_owner="ui| size_max_x=900.000000
        size_max_y=5000.500000| default_size="A4)" +
                                           paperLists + R"(
    }
}
udm{
    calibration{| _x=1.001000| _y=0.999000| }
    media{| max_roll_height=100.000000)" + paperLists +
                                           R"(}
}
hidden{| media{| default_size="A0| size{| }| }| })");

const std::string bareParameters = laidOut(bareMeta + R"(
mod{
    media{
        abilities="| caps_state="| ui_owner="| size_max_x=0.000000| size_max_y=0.000000
    }
}
udm{| calibration{| _x=1.000000| _y=1.000000| }| })");

std::string customPaper(const std::string& name, const std::string& paperName, int units,
                        const std::string& width, const std::string& top) {
    return "  " + name + "{\n   global_name=\"" + paperName + "\n   local_name=\"" + paperName +
           " local\n   units=" + std::to_string(units) + "\n   width=" + width +
           "\n   height=20\n   left=0\n   bottom=0\n   right=0\n   top=" + top + "\n  }\n";
}

std::string withCustomPapers(const std::string& configuration, const std::string& entries) {
    return edited(configuration, "}\nio{", " custom_papers{\n" + entries + " }\n}\nio{");
}

std::string edited(std::string text, std::string_view from, std::string_view to) {
    const std::size_t place = text.find(from);
    if (place == std::string::npos || text.find(from, place + 1) != std::string::npos) {
        throw std::invalid_argument(std::string(from));
    }
    return text.replace(place, from.size(), to);
}

std::vector<BodyItem> itemsOf(const std::string& body) {
    std::vector<BodyItem> items;
    std::string path;
    for (std::size_t begin = 0; begin < body.size();) {
        const std::size_t end = body.find('\n', begin) + 1;
        const std::string line = body.substr(begin, end - begin - 1);
        const std::size_t start = line.find_first_not_of(' ');
        if (line.back() == '{') {
            path += line.substr(start);
            path.back() = '/';
        } else if (line.back() == '}') {
            path.erase(path.rfind('/', path.size() - 2) + 1);
        } else {
            items.push_back({path + line.substr(start, line.find('=') - start), begin, end});
        }
        begin = end;
    }
    return items;
}

std::vector<std::string> spoiled(const std::string& body, const BodyItem& item) {
    const std::string before = body.substr(0, item.begin);
    const std::string line = body.substr(item.begin, item.end - item.begin);
    const std::string after = body.substr(item.end);
    const std::string name = line.substr(0, line.find('='));
    std::vector<std::string> bodies{before + after, before + name + "{\n}\n" + after};
    const char value = line[name.size() + 1];
    if (value == '-' || (value >= '0' && value <= '9')) {
        bodies.push_back(before + name + "=abc\n" + after);
    }
    return bodies;
}
