#include "tools/inspect/update.h"

#include "app/update/update_page.h"
#include "app/update/version.h"

namespace inspect {

Json newer(const Request& request) {
    return {{"newer", UpdateChecker::isNewer(request.arguments[0], request.arguments[1])}};
}

Json acceptablePage(const Request& request) {
    const QString domain = QString::fromStdString(request.arguments[0]);
    Json list = Json::array();
    for (std::size_t i = 1; i < request.arguments.size(); ++i) {
        const std::string& url = request.arguments[i];
        list.push_back(
            {{"url", url}, {"acceptable", UpdateChecker::acceptablePage(url, domain).has_value()}});
    }
    return list;
}

} // namespace inspect
