#include "api/JsonRecords.h"

// The search group's answers. Their keys are camel case on every version; 4.x results lack
// "engineName" and "pubDate".
namespace API {

namespace JsonDecoding {

constexpr Field<SearchCategory> searchCategoryFields[] = {
    required<&SearchCategory::id>("id"),
    required<&SearchCategory::name>("name"),
};

constexpr Field<SearchPlugin> searchPluginFields[] = {
    required<&SearchPlugin::name>("name"),
    required<&SearchPlugin::version>("version"),
    required<&SearchPlugin::fullName>("fullName"),
    required<&SearchPlugin::url>("url"),
    required<&SearchPlugin::supportedCategories>("supportedCategories"),
    required<&SearchPlugin::enabled>("enabled"),
};

constexpr Field<SearchResult> searchResultFields[] = {
    required<&SearchResult::fileName>("fileName"),     required<&SearchResult::fileUrl>("fileUrl"),
    required<&SearchResult::fileSize>("fileSize"),     required<&SearchResult::nbSeeders>("nbSeeders"),
    required<&SearchResult::nbLeechers>("nbLeechers"), required<&SearchResult::siteUrl>("siteUrl"),
    required<&SearchResult::descrLink>("descrLink"),   optional<&SearchResult::engineName>("engineName"),
    optional<&SearchResult::pubDate>("pubDate"),
};

constexpr Field<SearchResults> searchResultsFields[] = {
    required<&SearchResults::status>("status"),
    required<&SearchResults::results>("results"),
    required<&SearchResults::total>("total"),
};

constexpr Field<SearchStart> searchStartFields[] = {
    required<&SearchStart::id>("id"),
};

template <> std::span<const Field<SearchCategory>> fieldsOf()
{
    return searchCategoryFields;
}
template <> std::span<const Field<SearchPlugin>> fieldsOf()
{
    return searchPluginFields;
}
template <> std::span<const Field<SearchResult>> fieldsOf()
{
    return searchResultFields;
}
template <> std::span<const Field<SearchResults>> fieldsOf()
{
    return searchResultsFields;
}
template <> std::span<const Field<SearchStart>> fieldsOf()
{
    return searchStartFields;
}

} // namespace JsonDecoding

QList<SearchPlugin> decodeSearchPlugins(const QByteArray &json)
{
    return JsonDecoding::decodeGuarded<QList<SearchPlugin>>(json);
}

SearchResults decodeSearchResults(const QByteArray &json)
{
    return JsonDecoding::decodeGuarded<SearchResults>(json);
}

SearchStart decodeSearchStart(const QByteArray &json)
{
    return JsonDecoding::decodeGuarded<SearchStart>(json);
}

} // namespace API
