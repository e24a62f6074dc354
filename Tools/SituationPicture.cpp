#include "Tools/SituationPicture.h"

#include "Tools/CommandError.h"
#include "Tools/DisplayText.h"
#include "Tools/Expression.h"
#include "Tools/ExpressionResult.h"
#include "Tools/Output.h"
#include "Tools/PasswordFile.h"
#include "Tools/QuietLog.h"
#include "Tools/ResultFile.h"
#include "Tools/SituationCommand.h"
#include "Tools/SituationPlaces.h"

#include <filesystem>
#include <map>

namespace orvapp {

namespace {

// What a picture needs besides the situation, in its user data. A computed result is not stored with a situation: it
// has to be there before it is applied.
constexpr const char* SIZE = "orvapp.size";
constexpr const char* RESULT = "orvapp.result";

constexpr const char* USUAL_SIZE = "800x600";

std::string userData(const orv::ug::Situation& situation, const char* key) {
    const auto found = situation.allUserData().find(key);
    return found == situation.allUserData().end() ? std::string() : found->second.toStdString();
}

void complete(const SituationCaptureOptions& options, const Picture& picture, orv::ug::Situation* situation) {
    std::map<orv::Str, orv::Str> data = {{SIZE, options.picture.size}};
    if (picture.result().isCustom()) {
        data[RESULT] = options.picture.result;
    }
    situation->setAllUserData(data);
    situation->setDescription(options.description);
}

PlacedSituation captureRecovery(const SituationCaptureOptions& options, const Picture& picture) {
    orv::app::Situations* catalogue = orv::app::Situations::instance();
    catalogue->setRecoveryFolder(options.folder);
    orv::ug::Situation* situation = catalogue->captureRecovery();
    complete(options, picture, situation);
    const QuietLog log;
    catalogue->saveRecovery();
    if (log.count() > 0) {
        throw CommandError("cannot write to the folder \"" + options.folder + '"');
    }
    return {options.folder, situation};
}

PlacedSituation captureInFolder(const SituationCaptureOptions& options, const Picture& picture) {
    const PlacedSituation placed = {options.folder, orv::app::Situations::instance()->captureCurrent()};
    complete(options, picture, placed.situation.get());
    placed.situation->setName(options.name.empty() ? std::filesystem::path(options.picture.file.first).stem().string()
                                                   : options.name);
    writeSituation(*placed.situation, options.folder);
    return placed;
}

std::string modelFileOf(const PlacedSituation& placed, const SituationApplyOptions& options) {
    const std::string file = options.file.empty() ? placed.situation->sourceModelFile().toStdString() : options.file;
    if (file.empty()) {
        throw CommandError(placed.place + ": the situation names no file of a model, name one with --file");
    }
    return file;
}

PictureSize sizeOf(const PlacedSituation& placed, const SituationApplyOptions& options) {
    const std::string captured = userData(*placed.situation, SIZE);
    return parseSize(!options.size.empty() ? options.size : !captured.empty() ? captured : USUAL_SIZE);
}

} // namespace

void runSituationCapture(const SituationCaptureOptions& options) {
    const Picture picture(options.picture);
    setLook(options.look, &picture.view());
    picture.show(picture.onlyState());
    picture.fit();
    const PlacedSituation placed =
        options.isRecovery ? captureRecovery(options, picture) : captureInFolder(options, picture);
    writeSituations({placed}, options.json);
}

void runSituationApply(const SituationApplyOptions& options) {
    checkPictureName(options.out);
    const PlacedSituation placed = situationAt(options.place);
    const PictureSize size = sizeOf(placed, options);
    const ResultFile file(modelFileOf(placed, options), readPassword(options.passwordFile));
    ExpressionResult built;
    const std::string expression = userData(*placed.situation, RESULT);
    if (!expression.empty()) {
        built = buildResult(parseExpression(expression), file.results());
        file.add(built.info, expression);
    }

    orv::ug::UnstructGridModel* model = orv::app::Models::instance()->current();
    const orv::PtrRef<orv::vis::View> view = orv::app::Views::instance()->add();
    view->addModel(model);
    orv::ug::Error error;
    if (!placed.situation->applyTo(model, view.get(), &error)) {
        throw CommandError(placed.place + ": " + error.message().toStdString());
    }
    orv::Str reason;
    if (!model->updateShapes(&reason)) {
        throw CommandError(reason.toStdString());
    }
    writePicture(*view, size, options.out);
    writeStandardOutput(printable(options.out) + ", " + std::to_string(size.width) + " x " +
                        std::to_string(size.height) + " pixels\n");
}

} // namespace orvapp
