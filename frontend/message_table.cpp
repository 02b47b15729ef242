#include "frontend/message_table.h"

#include <iterator>
#include <stdexcept>
#include <unordered_map>

namespace odata::redfish {

namespace {

constexpr message_text table[] = {
    // DMTF Base registry 1.10; texts verbatim from Base.1.10.3.
    {"Base.1.10.AccessDenied", "Critical",
     "While attempting to establish a connection to '%1', the service denied access.",
     "Attempt to ensure that the URI is correct and that the service has the appropriate "
     "credentials."},
    {"Base.1.10.AccountNotModified", "Warning", "The account modification request failed.",
     "The modification may have failed due to permission issues or issues with the request body."},
    {"Base.1.10.AccountRemoved", "OK", "The account was successfully removed.",
     "No resolution is required."},
    {"Base.1.10.ActionNotSupported", "Critical", "The action %1 is not supported by the resource.",
     "The action supplied cannot be resubmitted to the implementation.  Perhaps the action was "
     "invalid, the wrong resource was the target or the implementation documentation may be of "
     "assistance."},
    {"Base.1.10.ActionParameterDuplicate", "Warning",
     "The action %1 was submitted with more than one value for the parameter %2.",
     "Resubmit the action with only one instance of the parameter in the request body if the "
     "operation failed."},
    {"Base.1.10.ActionParameterMissing", "Critical",
     "The action %1 requires the parameter %2 to be present in the request body.",
     "Supply the action with the required parameter in the request body when the request is "
     "resubmitted."},
    {"Base.1.10.ActionParameterNotSupported", "Warning",
     "The parameter %1 for the action %2 is not supported on the target resource.",
     "Remove the parameter supplied and resubmit the request if the operation failed."},
    {"Base.1.10.ActionParameterUnknown", "Warning",
     "The action %1 was submitted with the invalid parameter %2.",
     "Correct the invalid parameter and resubmit the request if the operation failed."},
    {"Base.1.10.ActionParameterValueFormatError", "Warning",
     "The value '%1' for the parameter %2 in the action %3 is of a different format than the "
     "parameter can accept.",
     "Correct the value for the parameter in the request body and resubmit the request if the "
     "operation failed."},
    {"Base.1.10.ActionParameterValueNotInList", "Warning",
     "The value '%1' for the parameter %2 in the action %3 is not in the list of acceptable "
     "values.",
     "Choose a value from the enumeration list that the implementation can support and resubmit "
     "the request if the operation failed."},
    {"Base.1.10.ActionParameterValueTypeError", "Warning",
     "The value '%1' for the parameter %2 in the action %3 is of a different type than the "
     "parameter can accept.",
     "Correct the value for the parameter in the request body and resubmit the request if the "
     "operation failed."},
    {"Base.1.10.CreateLimitReachedForResource", "Critical",
     "The create operation failed because the resource has reached the limit of possible "
     "resources.",
     "Either delete resources and resubmit the request if the operation failed or do not resubmit "
     "the request."},
    {"Base.1.10.Created", "OK", "The resource has been created successfully.", "None."},
    {"Base.1.10.EmptyJSON", "Warning",
     "The request body submitted contained an empty JSON object and the service is unable to "
     "process it.",
     "Add properties in the JSON object and resubmit the request."},
    {"Base.1.10.EventSubscriptionLimitExceeded", "Critical",
     "The event subscription failed due to the number of simultaneous subscriptions exceeding the "
     "limit of the implementation.",
     "Reduce the number of other subscriptions before trying to establish the event subscription "
     "or increase the limit of simultaneous subscriptions, if supported."},
    {"Base.1.10.GeneralError", "Critical",
     "A general error has occurred.  See Resolution for information on how to resolve the error, "
     "or @Message.ExtendedInfo if Resolution is not provided.",
     "None."},
    {"Base.1.10.InsufficientPrivilege", "Critical",
     "There are insufficient privileges for the account or credentials associated with the current "
     "session to perform the requested operation.",
     "Either abandon the operation or change the associated access rights and resubmit the request "
     "if the operation failed."},
    {"Base.1.10.InternalError", "Critical",
     "The request failed due to an internal service error.  The service is still operational.",
     "Resubmit the request.  If the problem persists, consider resetting the service."},
    {"Base.1.10.InvalidIndex", "Warning", "The index %1 is not a valid offset into the array.",
     "Verify the index value provided is within the bounds of the array."},
    {"Base.1.10.InvalidObject", "Critical", "The object at '%1' is invalid.",
     "Either the object is malformed or the URI is not correct.  Correct the condition and "
     "resubmit the request if it failed."},
    {"Base.1.10.NoOperation", "Warning",
     "The request body submitted contain no data to act upon and no changes to the resource took "
     "place.",
     "Add properties in the JSON object and resubmit the request."},
    {"Base.1.10.MalformedJSON", "Critical",
     "The request body submitted was malformed JSON and could not be parsed by the receiving "
     "service.",
     "Ensure that the request body is valid JSON and resubmit the request."},
    {"Base.1.10.NoValidSession", "Critical",
     "There is no valid session established with the implementation.",
     "Establish a session before attempting any operations."},
    {"Base.1.10.OperationTimeout", "Warning",
     "A timeout internal to the service occured as part of the request.  Partial results may have "
     "been returned.",
     "Resubmit the request.  If the problem persists, consider resetting the service or provider."},
    {"Base.1.10.PreconditionFailed", "Critical",
     "The ETag supplied did not match the ETag required to change this resource.",
     "Try the operation again using the appropriate ETag."},
    {"Base.1.10.PropertyDuplicate", "Warning", "The property %1 was duplicated in the request.",
     "Remove the duplicate property from the request body and resubmit the request if the "
     "operation failed."},
    {"Base.1.10.PropertyMissing", "Warning",
     "The property %1 is a required property and must be included in the request.",
     "Ensure that the property is in the request body and has a valid value and resubmit the "
     "request if the operation failed."},
    {"Base.1.10.PropertyNotWritable", "Warning",
     "The property %1 is a read only property and cannot be assigned a value.",
     "Remove the property from the request body and resubmit the request if the operation failed."},
    {"Base.1.10.PropertyUnknown", "Warning",
     "The property %1 is not in the list of valid properties for the resource.",
     "Remove the unknown property from the request body and resubmit the request if the operation "
     "failed."},
    {"Base.1.10.PropertyValueConflict", "Warning",
     "The property '%1' could not be written because its value would conflict with the value of "
     "the '%2' property.",
     "No resolution is required."},
    {"Base.1.10.PropertyValueFormatError", "Warning",
     "The value '%1' for the property %2 is of a different format than the property can accept.",
     "Correct the value for the property in the request body and resubmit the request if the "
     "operation failed."},
    {"Base.1.10.PropertyValueIncorrect", "Warning",
     "The property '%1' with the requested value of '%2' could not be written because the value "
     "does not meet the constraints of the implementation.",
     "No resolution is required."},
    {"Base.1.10.PropertyValueModified", "Warning",
     "The property %1 was assigned the value '%2' due to modification by the service.",
     "No resolution is required."},
    {"Base.1.10.PropertyValueNotInList", "Warning",
     "The value '%1' for the property %2 is not in the list of acceptable values.",
     "Choose a value from the enumeration list that the implementation can support and resubmit "
     "the request if the operation failed."},
    {"Base.1.10.PropertyValueOutOfRange", "Warning",
     "The value '%1' for the property %2 is not in the supported range of acceptable values.",
     "Correct the value for the property in the request body and resubmit the request if the "
     "operation failed."},
    {"Base.1.10.PropertyValueTypeError", "Warning",
     "The value '%1' for the property %2 is of a different type than the property can accept.",
     "Correct the value for the property in the request body and resubmit the request if the "
     "operation failed."},
    {"Base.1.10.QueryNotSupported", "Warning", "Querying is not supported by the implementation.",
     "Remove the query parameters and resubmit the request if the operation failed."},
    {"Base.1.10.QueryNotSupportedOnResource", "Warning",
     "Querying is not supported on the requested resource.",
     "Remove the query parameters and resubmit the request if the operation failed."},
    {"Base.1.10.QueryParameterOutOfRange", "Warning",
     "The value '%1' for the query parameter %2 is out of range %3.",
     "Reduce the value for the query parameter to a value that is within range, such as a start or "
     "count value that is within bounds of the number of resources in a collection or a page that "
     "is within the range of valid pages."},
    {"Base.1.10.QueryParameterValueFormatError", "Warning",
     "The value '%1' for the parameter %2 is of a different format than the parameter can accept.",
     "Correct the value for the query parameter in the request and resubmit the request if the "
     "operation failed."},
    {"Base.1.10.QueryParameterValueTypeError", "Warning",
     "The value '%1' for the query parameter %2 is of a different type than the parameter can "
     "accept.",
     "Correct the value for the query parameter in the request and resubmit the request if the "
     "operation failed."},
    {"Base.1.10.ResetRequired", "Warning",
     "In order to complete the operation, a component reset is required with the Reset action URI "
     "'%1' and ResetType '%2'.",
     "Perform the required reset action on the specified component."},
    {"Base.1.10.ResourceAlreadyExists", "Critical",
     "The requested resource of type %1 with the property %2 with the value '%3' already exists.",
     "Do not repeat the create operation as the resource has already been created."},
    {"Base.1.10.ResourceAtUriInUnknownFormat", "Critical",
     "The resource at '%1' is in a format not recognized by the service.",
     "Place an image or resource or file that is recognized by the service at the URI."},
    {"Base.1.10.ResourceAtUriUnauthorized", "Critical",
     "While accessing the resource at '%1', the service received an authorization error '%2'.",
     "Ensure that the appropriate access is provided for the service in order for it to access the "
     "URI."},
    {"Base.1.10.ResourceInUse", "Warning",
     "The change to the requested resource failed because the resource is in use or in transition.",
     "Remove the condition and resubmit the request if the operation failed."},
    {"Base.1.10.ResourceNotFound", "Critical",
     "The requested resource of type %1 named '%2' was not found.",
     "Provide a valid resource identifier and resubmit the request."},
    {"Base.1.10.ServiceInUnknownState", "Critical",
     "The operation failed because the service is in an unknown state and can no longer take "
     "incoming requests.",
     "Restart the service and resubmit the request if the operation failed."},
    {"Base.1.10.ServiceTemporarilyUnavailable", "Critical",
     "The service is temporarily unavailable.  Retry in %1 seconds.",
     "Wait for the indicated retry duration and retry the operation."},
    {"Base.1.10.SessionLimitExceeded", "Critical",
     "The session establishment failed due to the number of simultaneous sessions exceeding the "
     "limit of the implementation.",
     "Reduce the number of other sessions before trying to establish the session or increase the "
     "limit of simultaneous sessions, if supported."},
    {"Base.1.10.SourceDoesNotSupportProtocol", "Critical",
     "The other end of the connection at '%1' does not support the specified protocol %2.",
     "Change protocols or URIs."},
    {"Base.1.10.Success", "OK", "The request completed successfully.", "None"},
    {"Base.1.10.UnrecognizedRequestBody", "Warning",
     "The service detected a malformed request body that it was unable to interpret.",
     "Correct the request body and resubmit the request if it failed."},

    // The service's own registry TWR.v1_0_0.
    {"TWR.1.0.AccountLockup", "Warning", "The account was locked up.",
     "Please wait until the account is unlocked."},
    {"TWR.1.0.CertainConfigurationNotSet", "Critical",
     "A certain configuration is required for access resources", "None"},
    {"TWR.1.0.OemBiosUploadFail", "Warning",
     "There's a New BIOS fw is loaded into Staging Region and will be transferred to BIOS NOR "
     "Flash region upon system reset.",
     "If want to cancel the staging update for BIOS, to delete the pending task in task service"},
    {"TWR.1.0.OemEvidenceDumpErrorMessage", "Warning",
     "Task to generate evidence is in progress. Please try again in few minutes",
     "Wait until the evidence is generated and resubmit the request."},
    {"TWR.1.0.OemFileDownloaded", "OK", "The file %1 was downloaded successfully.",
     "No resolution was required."},
    {"TWR.1.0.OemFileoperationErrorMessage", "Warning", "The file was refused: %1.",
     "Use a file that this BMC exported, with valid values."},
    {"TWR.1.0.OemFirmwareAlreadyInUpdateMode", "Warning",
     "The %1 firmware update was already in update mode.",
     "Please check if there was the next step with respective API to execute."},
    {"TWR.1.0.OemHttppushuriErrorMessage", "Warning", "%1.",
     "Please check the reason for the error."},
    {"TWR.1.0.OemIpmiConfigMissingItem", "Warning",
     "The IPMI configuration upload is missing the item %1.",
     "Send the configuration file as the form part %1 and resubmit the request."},
    {"TWR.1.0.OemIpmiConfigRestoreErrorMessage", "Warning",
     "The IPMI configuration was not restored: %1.",
     "Upload a configuration file downloaded from this BMC, with valid values."},
    {"TWR.1.0.OemIpmiConfigRestored", "OK", "The IPMI configuration was restored successfully.",
     "No resolution was required."},
    {"TWR.1.0.OemLdapBadLocalRole", "Warning",
     "The value %1 for the property %2 is an invalid local role.",
     "Local role should be one of the following: Administrator, Operator, or User."},
    {"TWR.1.0.OemLdapBadPortNumber", "Warning", "It's an illegal port number format.",
     "Port number should match the valid port format."},
    {"TWR.1.0.OemLdapBadServiceAddresses", "Warning",
     "The value %1 for the property %2 was an invalid service address.",
     "Service addresses should start with ldap:// or ldaps://."},
    {"TWR.1.0.OemNotFromHostInterfaceErrorMessage", "Warning", "Failed to access this URI",
     "Request should be from Host Interface."},
    {"TWR.1.0.OemOnlyOneAuthenticationServiceCanBeEnabled", "Warning",
     "Only one authentication service can be enabled.",
     "Please enable one authentication service."},
    {"TWR.1.0.OemOtherAuthenticationServiceIsRunning", "Warning",
     "%1 authentication service was already enabled, so %2 cannot be enabled.",
     "Disable other authentication services and then try again."},
    {"TWR.1.0.OemRequestAcceptedMessage", "Ok",
     "Please also check Task Resource %1 to see more information.", "No resolution was required."},
    {"TWR.1.0.OemSecureEraseIsInProgress", "Warning", "A secure erase is in progress on %1.",
     "Wait for the erase to end, or abort it, then resubmit the request."},
    {"TWR.1.0.OemSecureEraseIsNotInProgress", "Warning", "No secure erase is in progress on %1.",
     "None."},
    {"TWR.1.0.OemSimpleupdateAcceptedMessage", "Ok",
     "Please also check Task Resource %1 to see more information.", "No resolution was required."},
    {"TWR.1.0.OemSimpleupdateErrorMessage", "Warning", "Error: %1.",
     "Please check the error reason."},
    {"TWR.1.0.OemSmtpModified", "Ok", "The SMTP was successfully modified.",
     "No resolution was required."},
    {"TWR.1.0.OemSmtpSettingNotAllow", "Warning",
     "Choosing 'None' for ConnectionProtocol and 'AutoDetect' for AuthenticationProtocol is not "
     "supported simultaneously.",
     "Set a specific SMTP AuthenticationProtocol."},
    {"TWR.1.0.OemSnmpv3IllegalKey", "Warning",
     "At least 8 characters are necessary and it must contain lowercase letters, uppercase "
     "letters, and numbers.",
     "Revise key pattern and try again."},
    {"TWR.1.0.OemSnmpv3IllegalProtocolType", "Warning", "Incorrect protocol type for the SNMPv3.",
     "Revise the SNMPv3 protocol type."},
    {"TWR.1.0.OemSnmpv3IllegalUser", "Warning",
     "The user field for SNMPv3 cannot contain: ,;&'\"<>=$|^?*~`()[]#%{}",
     "Do not include special characters in the SNMPv3 user name."},
    {"TWR.1.0.OemSslcertIllegalPair", "Warning",
     "The uploaded certificate and private key are not a valid pair.",
     "Upload a PEM certificate that is valid now and the unencrypted PEM private key that "
     "belongs to it."},
    {"TWR.1.0.OemSslcertMissingItem", "Warning",
     "The SSL certificate upload is missing the item %1.",
     "Send both the Certificate and the PrivateKey form parts and resubmit the request."},
    {"TWR.1.0.OemSslcertUploaded", "OK",
     "The SSL certificate was uploaded successfully and the web server uses it now.",
     "No resolution was required."},
    {"TWR.1.0.OemSystemLockdownEnabled", "Info",
     "System is in lockdown mode. This action is forbidden.", "No resolution was required."},
    {"TWR.1.0.OemSystemLockdownEnabledPatchValid", "Info",
     "The System Lockdown was turned on, only support patch %1.", "No resolution was required."},
    {"TWR.1.0.OemUserDisableFail", "Warning",
     "The User %1 cannot be disabled or deleted, because there is an active session created by "
     "this user.",
     "Logout the session and try disable action again."},
    {"TWR.1.0.OemUserNotToDisabledServiceWhenUserLogined", "Warning",
     "Disabled service %1 was not allowed there is an directory service user who have logined.",
     "Kill all related session or Wait these users logout."},
    {"TWR.1.0.SettingsFailed", "Warning", "Check out RelatedProperties",
     "Check if these attributes are acceptable or not"},
    {"TWR.1.0.SettingsSuccess", "OK", "Successfully Applied Settings", "None"},
};

// Built on first use; the keys view the constexpr table, which outlives it.
const std::unordered_map<std::string_view, const message_text*>& index() {
    static const auto map = [] {
        std::unordered_map<std::string_view, const message_text*> m;
        m.reserve(std::size(table));
        for (const auto& row : table) {
            m.emplace(row.id, &row);
        }
        return m;
    }();
    return map;
}

}  // namespace

message_descriptor message(std::string_view id) {
    const auto& map = index();
    const auto it = map.find(id);
    if (it == map.end()) {
        throw std::out_of_range("unknown message id: " + std::string(id));
    }
    const message_text& row = *it->second;
    return message_descriptor{{"MessageId", std::string(row.id)},
                              {"Severity", std::string(row.severity)},
                              {"Message", std::string(row.message)},
                              {"Resolution", std::string(row.resolution)}};
}

const message_text* message_table_begin() { return std::begin(table); }
const message_text* message_table_end() { return std::end(table); }

}  // namespace odata::redfish
