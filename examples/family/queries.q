lload "family.ddb"
children Ada ;
siblings Finn ;
grandparents Hugo ;
ancestors Iris ;
is_ancestor Bert Iris ;
is_ancestor Iris Bert ;
cousins Hugo ;
mother Dan ;
filter (lambda ?0 (null (children ?0))) people ;
