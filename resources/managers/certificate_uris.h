// The URIs of the certificate service and of the HTTPS certificate.
#pragma once

namespace odata::redfish {

inline constexpr const char* certificate_service_uri = "/redfish/v1/CertificateService";
inline constexpr const char* certificate_locations_uri =
    "/redfish/v1/CertificateService/CertificateLocations";
inline constexpr const char* replace_certificate_target_uri =
    "/redfish/v1/CertificateService/Actions/CertificateService.ReplaceCertificate";
inline constexpr const char* replace_certificate_actioninfo_uri =
    "/redfish/v1/CertificateService/ReplaceCertificateActionInfo";
inline constexpr const char* generate_csr_target_uri =
    "/redfish/v1/CertificateService/Actions/CertificateService.GenerateCSR";
inline constexpr const char* generate_csr_actioninfo_uri =
    "/redfish/v1/CertificateService/GenerateCSRActionInfo";
inline constexpr const char* https_certificates_uri =
    "/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates";
inline constexpr const char* https_certificate_uri =
    "/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1";
inline constexpr const char* rekey_target_uri =
    "/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1/Actions/Certificate.Rekey";
inline constexpr const char* rekey_actioninfo_uri =
    "/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1/RekeyActionInfo";
inline constexpr const char* renew_target_uri =
    "/redfish/v1/Managers/1/NetworkProtocol/HTTPS/Certificates/1/Actions/Certificate.Renew";

}  // namespace odata::redfish
