lload "animals.ddb"
conclusion ;
observe HasHair ;
observe EatsMeat ;
conclusion ;
observe Tawny ;
observe BlackStripes ;
conclusion ;
why ;
retract EatsMeat ;
observe HasHooves ;
conclusion ;
why ;
