// Dimensions: kind, value, limits and texts.
#include "QueryShape.h"
#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

KOVAResult KOVAOrvoPMIExporter::GetDimensionType(const KOVAIdentifier& annotation,
                                                 KOVAPMIDimensionType& type) {
  return AnswerFrom<KOVAPMI_DIMENSION>(annotation, [&](KOVAPMI_DIMENSION& dimension) {
    type = KOVAOrvoPMIEnumUtils::ToEnum(dimension.get_dimension_subtype());
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDimensionMainType(const KOVAIdentifier& annotation,
                                                     KOVAPMIDimensionMainType& type) {
  return AnswerFrom<KOVAPMI_DIMENSION>(annotation, [&](KOVAPMI_DIMENSION& dimension) {
    type = KOVAOrvoPMIEnumUtils::ToEnum(dimension.get_dimension_type());
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetCalloutFeatureAnnotationProperties(
    const KOVAIdentifier& annotation, KOVAPMICalloutFeatureAnnotationType& type) {
  return AnswerFrom<KOVAPMI_DIMENSION>(annotation, [&](KOVAPMI_DIMENSION& dimension) {
    int value = 0;
    if (!IsDimensionCalloutAnnotation(&dimension, value)) return Failure;
    type = KOVAOrvoPMIEnumUtils::ToEnum(static_cast<callout_feature_annotation_type>(value));
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDimensionValue(const KOVAIdentifier& annotation, double& value,
                                                  KOVAPMIUnit& /*unit*/, double& precision) {
  return AnswerFrom<KOVAPMI_DIMENSION>(annotation, [&](KOVAPMI_DIMENSION& dimension) {
    value = dimension.get_dimension_value();
    precision = dimension.get_dimval_precision();
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDimensionTolerance(const KOVAIdentifier& annotation,
                                                      double& lower, double& upper,
                                                      double& precision, bool& hasTolerance,
                                                      KOVAString& upperText,
                                                      KOVAString& lowerText) {
  return AnswerFrom<KOVAPMI_DIMENSION>(annotation, [&](KOVAPMI_DIMENSION& dimension) {
    lower = dimension.get_dimtol_lower_limit();
    upper = dimension.get_dimtol_upper_limit();
    precision = dimension.get_dimtol_precision();
    hasTolerance = true;
    upperText = KOVAString(dimension.get_alphanum_tol_upper_val());
    lowerText = KOVAString(dimension.get_alphanum_tol_lower_val());
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetCoordDimensionValue(const KOVAIdentifier& annotation,
                                                       int& /*coordinate*/, double& value,
                                                       double& upper, double& lower) {
  return AnswerFrom<KOVAPMI_DIMENSION>(annotation, [&](KOVAPMI_DIMENSION& dimension) {
    value = dimension.get_dimension_value();
    upper = dimension.get_dimtol_upper_limit();
    lower = dimension.get_dimtol_lower_limit();
    return Success;
  });
}

KOVAResult KOVAOrvoPMIExporter::GetDimensionTexts(const KOVAIdentifier& annotation,
                                                  KOVAString& prefix, KOVAString& suffix,
                                                  KOVAString& before, KOVAString& after,
                                                  KOVAString& upper, KOVAString& lower,
                                                  KOVAString& holeCallout, KOVAString& below) {
  return AnswerFrom<KOVAPMI_DIMENSION>(annotation, [&](KOVAPMI_DIMENSION& dimension) {
    if (KOVAPMI_NOTE* note = dimension.GetDimensionNote()) {
      prefix = KOVAString(note->GetPrefixNote());
      suffix = KOVAString(note->GetSuffixNote());
      before = KOVAString(note->GetBeforeNote());
      after = KOVAString(note->GetAfterNote());
      upper = KOVAString(note->GetUpperNote());
      lower = KOVAString(note->GetLowerNote());
      below = KOVAString(note->GetBelowNote());
    }
    holeCallout = KOVAString(dimension.GetHoleCalloutAlphaNumericValue());
    return Success;
  });
}
