// The documents a client reads first: service root, service document,
// metadata, the registry and schema file resources and the OEM registry.
#include <gtest/gtest.h>

#include <algorithm>
#include <boost/regex.hpp>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "base/bmc_root.h"
#include "framework/metadata.h"
#include "framework/oem_registry.h"
#include "framework/registry_file_resources.h"
#include "framework/registry_files.h"
#include "framework/schema_files.h"
#include "framework/service_root.h"
#include "framework/servicedocument.h"
#include "frontend/exception_http.h"
#include "frontend/message_table.h"
#include "stdout_capture.h"

using namespace odata::redfish;
namespace fs = std::filesystem;

namespace {

// The value GET builds for a resource of class handler named by capture.
template <class handler>
boost::json::object get_resource(const std::string& capture = "") {
    request_context context;
    context.method = GET;
    if (!capture.empty()) context.captures.push_back(capture);
    handler resource(context);
    resource.get(context);
    return resource.value();
}

// The status line of the error that GET of handler throws, "" for none.
template <class handler>
std::string get_error_status(const std::string& capture) {
    try {
        get_resource<handler>(capture);
    } catch (const exception_http& error) {
        return error.headers().substr(0, error.headers().find("\r\n"));
    }
    return "";
}

std::string read_file(const fs::path& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string text(const boost::json::value& value) {
    return boost::json::value_to<std::string>(value);
}

const fs::path dmtf_files = REDFISH_DATA_DIR;
const fs::path oem_schemas = fs::path(BMC_SOURCE_DIR) / "deploy" / "schemas";

// The DMTF's CSDL file, or the service's own for its Oem types.
std::string read_csdl(const std::string& file) {
    const std::string dmtf = read_file(dmtf_files / "csdl" / file);
    return dmtf.empty() ? read_file(oem_schemas / file) : dmtf;
}

}  // namespace

TEST(RegistryId, DropsTheVersionLetterAndTurnsUnderscoresIntoDots) {
    EXPECT_EQ(registry_of("Base.v1_10_3"), "Base.1.10.3");
    EXPECT_EQ(registry_of("TWR.v1_0_0"), "TWR.1.0.0");
    EXPECT_EQ(registry_of("BiosAttributeRegistry.v1_0_0"), "BiosAttributeRegistry.1.0.0");
    // Only the character after the first dot goes, whatever it is.
    EXPECT_EQ(registry_of("A.v1_0.v2_0"), "A.1.0.v2.0");
    EXPECT_EQ(registry_of("A.x1_0"), "A.1.0");
    EXPECT_EQ(registry_of("NoDot_1_2"), "NoDot.1.2");
    EXPECT_EQ(registry_of("Trailing."), "Trailing.");
    EXPECT_EQ(registry_of(""), "");
    EXPECT_EQ(registry_location("Base.v1_10_3"), "/registries/Base.1.10.3.json");
}

TEST(RegistryFiles, IdsOutsideTheTableAreNotFound) {
    // The route's unescaped "." lets these through to the handler.
    EXPECT_EQ(get_error_status<messageregisteryfile>("BaseXv1_10_3"), "Status: 404 Not Found");
    EXPECT_EQ(get_error_status<messageregisteryfile>("Base.v1_10_2"), "Status: 404 Not Found");
}

TEST(ArgumentCount, IsTheHighestPlaceholder) {
    EXPECT_EQ(number_of_args("No arguments."), 0u);
    EXPECT_EQ(number_of_args("%1."), 1u);
    EXPECT_EQ(number_of_args("%1 and again %1"), 1u);
    EXPECT_EQ(number_of_args("%2 before %1"), 2u);
    EXPECT_EQ(number_of_args("up to %10"), 10u);
    EXPECT_EQ(number_of_args("cannot contain: #%{}"), 0u);
    EXPECT_EQ(number_of_args("100%"), 0u);
}

TEST(OemRegistry, ListsEveryTwrMessageOfTheMessageTable) {
    const auto registry = oem_message_registry();
    EXPECT_EQ(registry.at("@odata.type"), "#MessageRegistry.v1_4_0.MessageRegistry");
    EXPECT_EQ(registry.at("Id"), "TWR.1.0.0");
    EXPECT_EQ(registry.at("RegistryPrefix"), "TWR");
    EXPECT_EQ(registry.at("RegistryVersion"), "1.0.0");

    const auto& messages = registry.at("Messages").as_object();
    size_t twr_rows = 0;
    for (auto row = message_table_begin(); row != message_table_end(); ++row) {
        if (row->id.substr(0, 8) != "TWR.1.0.") continue;
        ++twr_rows;
        const auto* message = messages.if_contains(row->id.substr(8));
        ASSERT_NE(message, nullptr) << row->id;
        EXPECT_EQ(text(message->at("Message")), row->message) << row->id;
        EXPECT_EQ(text(message->at("Severity")), row->severity) << row->id;
        EXPECT_EQ(text(message->at("Resolution")), row->resolution) << row->id;
    }
    EXPECT_EQ(messages.size(), twr_rows);
}

TEST(OemRegistry, ArgumentsAndSeveritiesFollowTheTexts) {
    const auto registry = oem_message_registry();
    const auto& messages = registry.at("Messages").as_object();
    const auto& two = messages.at("OemOtherAuthenticationServiceIsRunning").as_object();
    EXPECT_EQ(two.at("NumberOfArgs"), 2);
    EXPECT_EQ(two.at("ParamTypes"), (boost::json::array{"string", "string"}));
    const auto& none = messages.at("OemSnmpv3IllegalUser").as_object();
    EXPECT_EQ(none.at("NumberOfArgs"), 0);
    EXPECT_FALSE(none.contains("ParamTypes"));
    EXPECT_EQ(messages.at("OemHttppushuriErrorMessage").at("NumberOfArgs"), 1);
    // Severities the service sends as "Ok" and "Info" are OK in the registry.
    EXPECT_EQ(messages.at("OemRequestAcceptedMessage").at("MessageSeverity"), "OK");
    EXPECT_EQ(messages.at("OemSystemLockdownEnabled").at("MessageSeverity"), "OK");
    EXPECT_EQ(messages.at("OemSystemLockdownEnabled").at("Severity"), "Info");
}

TEST(ServiceDocument, IsWrittenWithJsonHeadersOnlyAfterGet) {
    request_context context;
    servicedocument handler(context);
    {
        stdout_capture before_get;
        handler.send_response();
        EXPECT_EQ(before_get.text(), "");
    }
    handler.get(context);
    stdout_capture capture;
    handler.send_response();
    const std::string& body = service_document_text();
    EXPECT_EQ(capture.text(), "Content-Length: " + std::to_string(body.size()) +
                                  "\r\nOData-Version: 4.0\r\n"
                                  "Content-Type: application/json; charset=UTF-8\r\n\r\n" +
                                  body);
}

TEST(Metadata, IsXmlWithItsOwnHeaders) {
    request_context context;
    metadata handler(context);
    handler.get(context);
    stdout_capture capture;
    handler.send_response();
    const std::string& text = metadata_text();
    EXPECT_EQ(capture.text(), "Content-Length: " + std::to_string(text.size()) +
                                  "\r\nContent-Type: application/xml\r\n\r\n" + text);
    EXPECT_NE(text.find("<edmx:Edmx xmlns:edmx=\"http://docs.oasis-open.org/odata/ns/edmx\" "
                        "Version=\"4.0\">"),
              std::string::npos);
    EXPECT_NE(text.find("<EntityContainer Name=\"Service\" "
                        "Extends=\"ServiceRoot.v1_5_0.ServiceContainer\"/>"),
              std::string::npos);
}

// Every reference names a CSDL file of the DMTF bundle, and every included
// namespace is one that file declares.
TEST(Metadata, ReferencesOnlyNamespacesTheCsdlFilesDeclare) {
    const std::string text = metadata_text();
    static const boost::regex reference(
        R"re(<edmx:Reference Uri="/schemas/v1/([^"]+)">(.*?)</edmx:Reference>)re");
    static const boost::regex include(R"re(<edmx:Include Namespace="([^"]+)")re");
    static const boost::regex schema(R"re(<Schema\s[^>]*Namespace="([^"]+)")re");
    std::set<std::string> files;
    const boost::sregex_iterator end;
    for (boost::sregex_iterator it(text.begin(), text.end(), reference); it != end; ++it) {
        const std::string file = (*it)[1];
        files.insert(file);
        const std::string csdl = read_csdl(file);
        ASSERT_FALSE(csdl.empty()) << file;
        std::set<std::string> declared;
        for (boost::sregex_iterator ns(csdl.begin(), csdl.end(), schema); ns != end; ++ns)
            declared.insert((*ns)[1]);
        const std::string includes = (*it)[2];
        for (boost::sregex_iterator ns(includes.begin(), includes.end(), include); ns != end; ++ns)
            EXPECT_TRUE(declared.count((*ns)[1])) << file << " " << (*ns)[1];
    }
    EXPECT_EQ(files.size(), schema_files().size() + 1);  // and RedfishExtensions
    EXPECT_TRUE(files.count("ServiceRoot_v1.xml"));
    EXPECT_TRUE(files.count("RedfishExtensions_v1.xml"));
}

TEST(SchemaFiles, TableIsSortedAndMatchesTheJsonBundle) {
    const auto& table = schema_files();
    EXPECT_TRUE(std::is_sorted(table.begin(), table.end(),
                               [](const auto& a, const auto& b) { return a.name < b.name; }));
    for (const auto& schema : table) {
        const std::string name(schema.name);
        EXPECT_EQ(find_schema_file(name), &schema);
        EXPECT_EQ(fs::exists(dmtf_files / "json-schema" / (name + ".json")), schema.json_published)
            << name;
        if (!schema.json_published || schema.version.empty()) continue;
        // Bodies of this version validate against an errata file of its minor version.
        const std::string version(schema.version);
        const std::string minor = name + "." + version.substr(0, version.rfind('_') + 1);
        bool found = false;
        for (const auto& entry : fs::directory_iterator(dmtf_files / "json-schema"))
            found = found || entry.path().filename().string().rfind(minor, 0) == 0;
        EXPECT_TRUE(found) << minor;
    }
    EXPECT_EQ(find_schema_file("Nope"), nullptr);
}

class ServiceRoot : public ::testing::Test {
protected:
    void SetUp() override {
        root_ = fs::temp_directory_path() / ("service-root-test-" + std::to_string(::getpid()));
        fs::remove_all(root_);
        fs::create_directories(root_);
        platform::set_bmc_root_for_tests(root_.string());
    }
    void TearDown() override {
        platform::set_bmc_root_for_tests(previous_root_);
        fs::remove_all(root_);
    }

    fs::path root_;
    std::string previous_root_ = platform::bmc_root();
};

TEST_F(ServiceRoot, UuidIsDrawnOnceAndKept) {
    const auto first = get_resource<service_root>();
    const std::string uuid = text(first.at("UUID"));
    static const boost::regex format(
        "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    EXPECT_TRUE(boost::regex_match(uuid, format)) << uuid;
    EXPECT_EQ(text(get_resource<service_root>().at("UUID")), uuid);
}

TEST_F(ServiceRoot, DamagedGuidFileIsLeftAloneAndNoUuidIsClaimed) {
    const fs::path guid = root_ / "var" / "bmc" / "device_guid";
    fs::create_directories(guid.parent_path());
    std::ofstream(guid) << "short";
    const auto root = get_resource<service_root>();
    EXPECT_FALSE(root.contains("UUID"));
    EXPECT_EQ(read_file(guid), "short");
}
