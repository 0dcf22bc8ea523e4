# SPDX-License-Identifier: GPL-3.0-or-later
# The information dictionary of the program, from cache variables. A service without a value has no key,
# and the program then uses the public service. Updates are compared by CFBundleVersion, which therefore is
# the project's version and cannot be forgotten at a release.
set(VELTRIX_UPDATE_FEED_URL "" CACHE STRING "SUFeedURL: address of the signed update feed")
set(VELTRIX_UPDATE_PUBLIC_KEY "" CACHE STRING "SUPublicEDKey: base64 Ed25519 key that signs updates")
set(VELTRIX_ITUNES_BASE_URL "" CACHE STRING "VeltrixITunesBaseURL: App Store search service")
set(VELTRIX_SEARCH_HINTS_URL "" CACHE STRING "VeltrixSearchHintsURL: search-suggestion service")
set(VELTRIX_APP_STORE_URL "" CACHE STRING "VeltrixAppStoreURL: web address of App Store pages")
set(VELTRIX_SUPPORT_EMAIL "support@veltrix.example" CACHE STRING "VeltrixSupportEmail")
set(VELTRIX_PRIVACY_URL "https://veltrix.example/privacy" CACHE STRING "VeltrixPrivacyURL")
set(VELTRIX_TERMS_URL "https://veltrix.example/terms" CACHE STRING "VeltrixTermsURL")

set(VELTRIX_DEPLOYMENT_KEYS "")
foreach(entry IN ITEMS
        SUFeedURL:VELTRIX_UPDATE_FEED_URL
        SUPublicEDKey:VELTRIX_UPDATE_PUBLIC_KEY
        VeltrixITunesBaseURL:VELTRIX_ITUNES_BASE_URL
        VeltrixSearchHintsURL:VELTRIX_SEARCH_HINTS_URL
        VeltrixAppStoreURL:VELTRIX_APP_STORE_URL
        VeltrixSupportEmail:VELTRIX_SUPPORT_EMAIL
        VeltrixPrivacyURL:VELTRIX_PRIVACY_URL
        VeltrixTermsURL:VELTRIX_TERMS_URL)
    string(REPLACE ":" ";" parts ${entry})
    list(GET parts 0 key)
    list(GET parts 1 variable)
    if(${variable})
        string(REPLACE "&" "&amp;" value "${${variable}}")
        string(REPLACE "<" "&lt;" value "${value}")
        string(APPEND VELTRIX_DEPLOYMENT_KEYS
            "    <key>${key}</key>\n    <string>${value}</string>\n")
    endif()
endforeach()
configure_file(${CMAKE_SOURCE_DIR}/resources/Info.plist.in
    ${CMAKE_BINARY_DIR}/share/veltrix/Info.plist @ONLY)
