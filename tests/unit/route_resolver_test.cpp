#include <gtest/gtest.h>

#include <array>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/route_resolver.h"
#include "platform/libipmi.h"
#include "service/route_table.h"

namespace rf = odata::redfish;

namespace {

using captures_t = std::vector<std::string>;

// A handler that only remembers which class the resolver made.
class named_handler : public rf::webservice {
public:
    named_handler(rf::request_context& context, std::string_view name)
        : webservice(context), name(name) {}
    std::string_view name;
    rf::request_context& context() { return context_; }
};

// Factories are plain function pointers, so each class name gets its own
// slot: factory I makes a handler named after slot I.
constexpr size_t slot_count = 320;

std::vector<std::string_view>& slot_names() {
    static std::vector<std::string_view> names;
    return names;
}

template <size_t I>
std::shared_ptr<rf::webservice> make_named(rf::request_context& context) {
    return std::make_shared<named_handler>(context, slot_names().at(I));
}

template <size_t... I>
constexpr std::array<rf::handler_factory, sizeof...(I)> make_slots(std::index_sequence<I...>) {
    return {&make_named<I>...};
}

constexpr auto slot_factories = make_slots(std::make_index_sequence<slot_count>{});

rf::handler_factory factory_for(std::string_view name) {
    auto& names = slot_names();
    for (size_t slot = 0; slot < names.size(); ++slot) {
        if (names[slot] == name) return slot_factories[slot];
    }
    if (names.size() >= slot_count) return nullptr;
    names.push_back(name);
    return slot_factories[names.size() - 1];
}

// The routes, each served by a handler named after its class.
std::vector<rf::route> named(std::vector<rf::route> served) {
    for (rf::route& entry : served) entry.factory = factory_for(entry.handler_class);
    return served;
}

const rf::route_resolver& service_resolver() {
    static const std::vector<rf::route> routes =
        named({rf::route_table().begin(), rf::route_table().end()});
    static const rf::route_resolver resolver(routes);
    return resolver;
}

// The handler that path's route makes, null for none.
std::shared_ptr<rf::webservice> make_for(const rf::route_resolver& resolver,
                                         const std::string& path, rf::request_context& context) {
    const rf::route* row = resolver.resolve(path, context.captures);
    return row && row->served() ? row->factory(context) : nullptr;
}

struct expected_route {
    std::string path;
    std::string_view handler_class;  // "" for no route
    captures_t captures;
};

void expect_routes(const rf::route_resolver& resolver, const std::vector<expected_route>& cases) {
    for (const expected_route& expected : cases) {
        SCOPED_TRACE(expected.path);
        captures_t captures;
        EXPECT_EQ(resolver.resolve_class(expected.path, captures), expected.handler_class);
        EXPECT_EQ(captures, expected.captures);
    }
}

std::vector<std::string_view> split(std::string_view path) {
    std::vector<std::string_view> parts;
    size_t start = 1;
    while (start <= path.size()) {
        size_t end = path.find('/', start);
        if (end == std::string_view::npos) end = path.size();
        parts.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

// One segment that each pattern of the table accepts.
const std::map<std::string_view, std::string_view>& pattern_samples() {
    static const std::map<std::string_view, std::string_view> samples = {
        {"([0-9]+)", "2"},
        {"(.+)", "Sample.v1_0_0"},
        {"(NIC)([0-9]+)", "NIC3"},
        {"(GPU)([0-9]+)", "GPU1"},
        {"(NVMeSSD)([0-9]+)", "NVMeSSD0"},
        {"(PCIeSSD)([0-9]+)", "PCIeSSD4"},
        {"(((NVMeSSD.)([0-9]+)(.Group.)([0-9]+)(.StorageBackplane))|((MRVL.HA-RAID.)([0-9]+)(."
         "StorageModule))|((HA-RAID.|HBA.)([0-9]+)(.StorageEnclosure.)([0-9]+))|((StorageBackplane)"
         "))",
         "MRVL.HA-RAID.0.StorageModule"},
        {"(HA-RAID.)([0-9]+)(.StorageEnclosure.)([0-9]+)", "HA-RAID.1.StorageEnclosure.2"},
        {"(((NVMeSSD.)([0-9]+)(.Group.)([0-9]+)(.StorageBackplane))|((HA-RAID.|HBA.)([0-9]+)(."
         "StorageEnclosure.)([0-9]+)))",
         "HBA.0.StorageEnclosure.1"},
        {"(Disk.Bay.)([0-9]+)", "Disk.Bay.7"},
        {"(BMC|Backup_BMC|Golden_BMC|Staging_BMC|BIOS|Backup_BIOS|Golden_BIOS|Staging_BIOS|"
         "CPLD_Motherboard|Staging_CPLD_Motherboard|CPLD_Backplane|CPLD_Backplane_0|BIOS_ME|"
         "StagingPMem|LCMC|LCMC_Backplane)",
         "Golden_BIOS"},
        {"(Broadcom|Marvell|Staging_Broadcom|Staging_Marvell|NIC|StagingNIC|GPU|StagingGPU|"
         "NVMeController|NVMeSSDA|NVMeSSDB|PowerSupply|PMem)([0-9]+)",
         "PowerSupply2"},
        {"(BMC|BIOS)", "BIOS"},
        {"((HARAIDController.)([0-9]+))|((MRVL_HARAIDController.)([0-9]+))", "HARAIDController.1"},
        {"(MRVL_HARAIDController.)([0-9]+)", "MRVL_HARAIDController.0"},
        {"(HARAIDController.)([0-9]+)", "HARAIDController.3"},
        {"(Base.v1_10_3|BiosAttributeRegistry.v1_0_0|Event.v1_0_0|TWR.v1_0_0)", "Event.v1_0_0"},
        {"(AvgPowerConsumedHour|MinPowerConsumedHour|MaxPowerConsumedHour|AvgPowerConsumedDay|"
         "MinPowerConsumedDay|MaxPowerConsumedDay|AvgPowerConsumedWeek|MinPowerConsumedWeek|"
         "MaxPowerConsumedWeek)",
         "MaxPowerConsumedWeek"},
        {"(AvgPowerConsumptionHour|MinPowerConsumptionHour|MaxPowerConsumptionHour|"
         "AvgPowerConsumptionDay|MinPowerConsumptionDay|MaxPowerConsumptionDay|"
         "AvgPowerConsumptionWeek|MinPowerConsumptionWeek|MaxPowerConsumptionWeek)",
         "AvgPowerConsumptionDay"},
        {"(Administrator|Operator|ReadOnly|Custom)", "Custom"},
        {"(CD)([0-9]+)", "CD1"},
        {"(Floppy)([0-9]+)", "Floppy2"},
        {"(Boot)([0-9a-fA-F]+)", "Boot00fF"},
        {"(HBA|HA-RAID|HBA-IR|RAIDIntegrated|SATAEmbedded|NVMeSSD|MRVL.HA-RAID)", "HBA-IR"},
        {"(HA-RAID|RAIDIntegrated|SATAEmbedded|NVMeSSD|HBA-IR|MRVL.HA-RAID|HBA)", "SATAEmbedded"},
        {"(HA-RAID|MRVL.HA-RAID)", "MRVL.HA-RAID"},
        {"(Controller.)([0-9]+)(.Volume.)([0-9]+)", "Controller.0.Volume.1"},
        {"(RAIDIntegrated|SATAEmbedded)", "RAIDIntegrated"},
        {"(CreateVolumeActionInfo|SaveActionInfo|ClearVolumesActionInfo)", "SaveActionInfo"},
        {"(CreateVolumeActionInfo|VolumeDeleteActionInfo|DriveUnmarkSpareActionInfo|"
         "DriveMarkSpareActionInfo)",
         "DriveMarkSpareActionInfo"},
    };
    return samples;
}

bool crashdump_supported() { return is_ACD_crashdump_supported() != 0; }

}  // namespace

// The table itself: well-formed rows, and every row reachable.

TEST(RouteTable, RowsAreFullPathsWithoutShorthandOrDuplicates) {
    std::set<std::string_view> paths;
    for (const rf::route& entry : rf::route_table()) {
        SCOPED_TRACE(std::string(entry.path));
        const bool rooted =
            entry.path.substr(0, 8) == "/redfish" || entry.path.substr(0, 8) == "/restapi";
        EXPECT_TRUE(rooted);
        EXPECT_FALSE(entry.handler_class.empty());
        EXPECT_EQ(entry.path.find("//"), std::string_view::npos);
        EXPECT_NE(entry.path.back(), '/');
        EXPECT_EQ(entry.path.find("{n}"), std::string_view::npos);
        EXPECT_EQ(entry.path.find("..."), std::string_view::npos);
        EXPECT_TRUE(paths.insert(entry.path).second) << "duplicate path";
    }
    EXPECT_GT(paths.size(), 250u);
}

TEST(RouteTable, EveryRowResolvesToItsOwnClass) {
    const auto& samples = pattern_samples();
    for (const rf::route& entry : rf::route_table()) {
        SCOPED_TRACE(std::string(entry.path));
        std::string path;
        bool sampled = true;
        for (std::string_view segment : split(entry.path)) {
            path += '/';
            if (segment.front() != '(') {
                path += segment;
                continue;
            }
            auto sample = samples.find(segment);
            if (sample == samples.end()) {
                ADD_FAILURE() << "no sample for pattern " << segment;
                sampled = false;
                break;
            }
            path += sample->second;
        }
        if (!sampled) continue;
        captures_t captures;
        std::string_view expected = entry.handler_class;
        if (entry.has(rf::route_crashdump) && !crashdump_supported()) expected = "";
        EXPECT_EQ(service_resolver().resolve_class(path, captures), expected) << path;
    }
}

// The edge cases that the route vocabulary must keep.

TEST(RouteResolver, NamedEdgeCases) {
    expect_routes(
        service_resolver(),
        {
            {"/redfish/v1/Chassis/1/PCIeDevices/NIC3", "nic", {"NIC", "3"}},
            {"/redfish/v1/Chassis/1/PCIeDevices/NIC", "", {}},
            {"/redfish/v1/Systems/1/BootOptions/Boot000A", "bootoptions", {"Boot", "000A"}},
            {"/redfish/v1/Systems/1/BootOptions/Boot00fe", "bootoptions", {"Boot", "00fe"}},
            {"/redfish/v1/Systems/1/BootOptions/Boot00G1", "", {}},
            {"/redfish/v1/Chassis/2", "", {}},
            {"/redfish/v1/Systems/2", "", {}},
            {"/redfish/v1/Managers/2", "", {}},
            {"/redfish/v1/Registries/TWR.v1_0_0", "messageregisteryfile", {"TWR.v1_0_0"}},
            {"/redfish/v1/Registries/Base.v1_10_3", "messageregisteryfile", {"Base.v1_10_3"}},
            {"/redfish/v1/Registries/Base.v1_10_2", "", {}},
        });
}

TEST(RouteResolver, HexadecimalOnlyInBootOptions) {
    expect_routes(service_resolver(), {
                                          {"/redfish/v1/Chassis/1/Sensors/1a", "", {}},
                                          {"/redfish/v1/Chassis/1/Sensors/A", "", {}},
                                          {"/redfish/v1/Systems/1/Memory/0A", "", {}},
                                          {"/redfish/v1/Chassis/1/PCIeDevices/NIC1F", "", {}},
                                          {"/redfish/v1/TaskService/Tasks/ff", "", {}},
                                          {"/redfish/v1/AccountService/Accounts/0x2", "", {}},
                                      });
}

TEST(RouteResolver, PatternsMatchWholeSegments) {
    expect_routes(service_resolver(),
                  {
                      {"/redfish/v1/Chassis/1/PCIeDevices/NIC3x", "", {}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/xNIC3", "", {}},
                      {"/redfish/v1/Chassis/1/Sensors/3 ", "", {}},
                      {"/redfish/v1/Systems/1/BootOptions/Boot0001.", "", {}},
                      {"/redfish/v1/Registries/TWR.v1_0_0x", "", {}},
                      {"/redfish/v1/Registries/XTWR.v1_0_0", "", {}},
                      {"/redfish/v1/AccountService/Roles/Administrators", "", {}},
                      {"/redfish/v1/Managers/1/VirtualMedia/CD1CD2", "", {}},
                      {"/redfish/v1/UpdateService/FirmwareInventory/BMC2", "", {}},
                      {"/redfish/v1/UpdateService/FirmwareInventory/NIC", "", {}},
                  });
}

TEST(RouteResolver, SegmentsAreCaseSensitive) {
    expect_routes(service_resolver(),
                  {
                      {"/Redfish/v1", "", {}},
                      {"/redfish/V1", "", {}},
                      {"/redfish/v1/chassis", "", {}},
                      {"/redfish/v1/Chassis/1/pciedevices", "", {}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/nic3", "", {}},
                      {"/redfish/v1/Systems/1/BootOptions/boot000A", "", {}},
                      {"/redfish/v1/Registries/twr.v1_0_0", "", {}},
                      {"/redfish/v1/AccountService/Roles/readonly", "", {}},
                      {"/redfish/v1/UpdateService/FirmwareInventory/bmc", "", {}},
                  });
}

TEST(RouteResolver, EmptySegmentsAndTrailingSlashAreIgnored) {
    expect_routes(service_resolver(),
                  {
                      {"/redfish/v1/", "service_root", {}},
                      {"/redfish/v1", "service_root", {}},
                      {"/redfish/", "redfish_ver", {}},
                      {"/redfish/v1/Chassis/1/", "chassis", {}},
                      {"/redfish/v1/Chassis/1/PCIeDevices/GPU2/", "gpu", {"GPU", "2"}},
                      {"//redfish//v1///Systems/1", "system", {}},
                      {"/", "", {}},
                      {"///", "", {}},
                  });
}

TEST(RouteResolver, InvalidUriThrows) {
    captures_t captures;
    for (std::string path : {"", "redfish/v1", " /redfish", "Chassis/1"}) {
        SCOPED_TRACE(path);
        try {
            service_resolver().resolve(path, captures);
            ADD_FAILURE() << "no exception";
        } catch (const std::invalid_argument& error) {
            EXPECT_EQ(std::string(error.what()), "provided uri is invalid: " + path);
        }
        EXPECT_THROW(service_resolver().resolve_class(path, captures), std::invalid_argument);
    }
}

TEST(RouteResolver, OverlongSegmentsMatchNoPattern) {
    const std::string long_number(100000, '7');
    expect_routes(service_resolver(), {
                                          {"/redfish/v1/Chassis/1/Sensors/" + long_number, "", {}},
                                          {"/redfish/v1/JsonSchemas/" + long_number, "", {}},
                                          {"/redfish/v1/Chassis/1/Sensors/" + std::string(200, '7'),
                                           "sensor",
                                           {std::string(200, '7')}},
                                      });
}

// Crash-dump routes exist only while the platform supports crash dumps.
TEST(RouteResolver, CrashdumpRoutesFollowPlatformSupport) {
    const std::string crashdump = "/redfish/v1/Systems/1/LogServices/Crashdump";
    const std::vector<std::pair<std::string, std::string_view>> routes = {
        {crashdump, "crashdump_logservice"},
        {crashdump + "/Actions/LogService.ClearLog", "crashdump_logservice_clearlog"},
        {crashdump + "/Actions/Oem/Crashdump.SendRawPeci", "peci_sendraw"},
        {crashdump + "/Actions/Oem/Crashdump.OnDemand", "crashdump_ondemand"},
        {crashdump + "/Actions/Oem/Crashdump.Telemetry", "crashdump_telemetry"},
        {crashdump + "/Entries", "crashdumpcollection"},
        {crashdump + "/Entries/OnDemand", "crashdump_logentry"},
        {crashdump + "/Entries/Telemetry", "crashdump_logentry"},
    };
    const bool supported = crashdump_supported();
    for (const auto& [path, handler_class] : routes) {
        SCOPED_TRACE(path);
        captures_t captures;
        EXPECT_EQ(service_resolver().resolve_class(path, captures), supported ? handler_class : "");
        rf::request_context context;
        EXPECT_EQ(make_for(service_resolver(), path, context) != nullptr, supported);
    }
    for (const rf::route& entry : rf::route_table()) {
        const bool under_crashdump = entry.path.substr(0, crashdump.size()) == crashdump;
        EXPECT_EQ(entry.has(rf::route_crashdump), under_crashdump) << entry.path;
    }
    // The sibling log service does not depend on crash-dump support.
    expect_routes(service_resolver(),
                  {
                      {"/redfish/v1/Systems/1/LogServices/Log1", "systems_logservices", {}},
                      {"/redfish/v1/Systems/1/LogServices", "systems_logservicecollection", {}},
                      {"/redfish/v1/Oem/Tarnwright/DumpService/Dumps/HostCrashDump", "dump", {}},
                  });
}

// Factories: what resolve makes.

TEST(RouteResolverFactories, ResolveMakesTheRoutedClassWithCaptures) {
    rf::request_context context;
    context.captures = {"stale"};
    auto handler = make_for(service_resolver(),
                            "/redfish/v1/Chassis/1/PCIeDevices/NIC3/PCIeFunctions/1", context);
    ASSERT_NE(handler, nullptr);
    auto* named = dynamic_cast<named_handler*>(handler.get());
    ASSERT_NE(named, nullptr);
    EXPECT_EQ(named->name, "nicfunc");
    EXPECT_EQ(&named->context(), &context);
    EXPECT_EQ(context.captures, (captures_t{"NIC", "3", "1"}));

    context.captures = {"stale"};
    EXPECT_EQ(make_for(service_resolver(), "/redfish/v1/Chassis/9", context), nullptr);
    EXPECT_TRUE(context.captures.empty());
}

// A row not served yet is found only when no served row matches the path.
TEST(RouteResolverFactories, UnservedRowsGiveWayToServedOnes) {
    const std::vector<rf::route> routes = {
        {"/logs/(dump)", "unwritten"},
        {"/logs/(dump)/entries", "unwritten_entries"},
        {"/logs/([a-z]+)", "plain", factory_for("plain")},
    };
    const rf::route_resolver resolver(routes);
    captures_t captures;
    EXPECT_EQ(resolver.resolve_class("/logs/dump", captures), "plain");
    EXPECT_EQ(captures, (captures_t{"dump"}));
    const rf::route* row = resolver.resolve("/logs/dump/entries", captures);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->handler_class, "unwritten_entries");
    EXPECT_FALSE(row->served());
    EXPECT_EQ(captures, (captures_t{"dump"}));
    EXPECT_EQ(resolver.resolve_class("/logs/dump/entries", captures), "");
    EXPECT_TRUE(captures.empty());
}

// The tree on its own: small tables that isolate one rule each.

TEST(RouteResolverTree, BacktrackingDropsTheCapturesOfDeadEnds) {
    const std::vector<rf::route> routes = {
        {"/a/(x)([0-9]+)", "member"},
        {"/a/(x)([0-9]+)/(y)([0-9]+)", "nested"},
        {"/a/([a-z])([0-9]+)/b/c", "fallback"},
        {"/a/x1/b", "literal"},
    };
    const std::vector<rf::route> rows = named(routes);
    const rf::route_resolver resolver(rows);
    expect_routes(resolver, {
                                {"/a/x1", "member", {"x", "1"}},
                                {"/a/x1/y2", "nested", {"x", "1", "y", "2"}},
                                {"/a/x1/b/c", "fallback", {"x", "1"}},
                                {"/a/x1/b", "literal", {}},
                                {"/a/z1/b", "", {}},
                                {"/a/x1/y2/z", "", {}},
                            });
}

TEST(RouteResolverTree, OnlyParticipatingGroupsAreCaptured) {
    const std::vector<rf::route> routes = {
        {"/r/((a)([0-9]))|((b)([0-9]))", "either"},
        {"/r/(c)?(d)", "optional"},
    };
    const std::vector<rf::route> rows = named(routes);
    const rf::route_resolver resolver(rows);
    expect_routes(resolver, {
                                {"/r/a1", "either", {"a1", "a", "1"}},
                                {"/r/b2", "either", {"b2", "b", "2"}},
                                {"/r/d", "optional", {"d"}},
                                {"/r/cd", "optional", {"c", "d"}},
                            });
}

TEST(RouteResolverTree, NumberShorthandAndIntermediateNodes) {
    const std::vector<rf::route> routes = {
        {"/items/{n}/parts", "parts"},
        {"/items/([0-9]+)", "item"},
        {"/items/{n}", "shadowed"},
    };
    const std::vector<rf::route> rows = named(routes);
    const rf::route_resolver resolver(rows);
    expect_routes(resolver, {
                                {"/items/5/parts", "parts", {"5"}},
                                {"/items/5", "item", {"5"}},
                                {"/items", "", {}},
                                {"/items/5/parts/6", "", {}},
                            });
}

TEST(RouteResolverTree, CrashdumpFlagFallsBackToSiblings) {
    const std::vector<rf::route> routes = {
        {"/logs/(dump)", "crash", nullptr, 0, {}, rf::route_crashdump},
        {"/logs/([a-z]+)", "plain"},
    };
    const std::vector<rf::route> rows = named(routes);
    const rf::route_resolver resolver(rows);
    if (crashdump_supported()) {
        expect_routes(resolver, {{"/logs/dump", "crash", {"dump"}}});
    } else {
        expect_routes(resolver, {{"/logs/dump", "plain", {"dump"}}});
    }
    expect_routes(resolver, {{"/logs/other", "plain", {"other"}}});
}

// Captures of one answer never leak into the next.
TEST(RouteResolverTree, GivesStableAnswers) {
    const std::vector<rf::route> rows =
        named({{"/dev/(sd)([a-z])", "disk"}, {"/dev/(sd)([a-z])/{n}", "partition"}});
    const rf::route_resolver resolver(rows);
    captures_t captures = {"left", "over"};
    for (int round = 0; round < 1000; ++round) {
        ASSERT_EQ(resolver.resolve_class(round % 2 ? "/dev/sdb/3" : "/dev/sdb", captures),
                  round % 2 ? "partition" : "disk");
        ASSERT_EQ(captures.size(), round % 2 ? 3u : 2u);
    }
    EXPECT_EQ(captures, (captures_t{"sd", "b", "3"}));
}
