/* The library's entry points as a C program meets them. */
#include <stdio.h>

#include "KOVAOrvoPMIExporterFactory.h"

int main(void) {
  int place = 0;
  KOVAPMIExporter* exporter = (KOVAPMIExporter*)&place;
  const int result = KOVACreateOrvoPMIExporter(NULL, &exporter);
  printf("0x%x %s %d\n", (unsigned int)result, exporter == NULL ? "null" : "kept",
         MERIDAN_WORKS_RQF5_INTERNAL_KOVAOrvoPMIExporter());
  return 0;
}
