MEVREPORT ; Formats the report of a visit in lines of at most 80 bytes
 ;
GETRPT ; Call: visit number
 NEW captions,count,dfn,ien,node
 SET ien=$TRANSLATE(param," "),count=0
 IF ien'?1N.8N SET reply="-1^There is no such visit." QUIT
 IF '$DATA(^MEVVST(ien,0)) SET reply="-1^There is no visit "_ien_"." QUIT
 SET node=^MEVVST(ien,0),dfn=$PIECE(node,"^",2)
 DO PUT("VISIT "_ien)
 DO PUT("Patient:   "_$$NAME^MEVFILES(2,dfn)_"  (number "_dfn_")")
 DO PUT("Date:      "_$$SLASHED^MEVDATE($PIECE(node,"^"))_" "_$$CLOCK^MEVDATE($PIECE(node,"^")))
 DO PUT("Location:  "_$$NAME^MEVFILES(44,$PIECE(node,"^",3)))
 DO PUT("Provider:  "_$$NAME^MEVFILES(200,$PIECE(node,"^",4)))
 DO PUT("Category:  "_$PIECE(node,"^",5))
 DO SECTION("INFANT FEEDING","^MEVVIF","Choice")
 SET captions="Toileting^Bathing^Dressing^Transfers^Feeding^Continence^Finances^Cooking^Shopping^Housework"
 DO SECTION("FUNCTIONAL STATUS","^MEVVELD",captions_"^Medications^Transportation^Change in status^Caregiver")
 SET captions="Severity^FEV 1^FEF 25-75^PEF^Tobacco smoke^Particulate matter^Dust mites^Management plan"
 DO SECTION("ASTHMA","^MEVVAST",captions)
 DO SECTION("TREATMENT CONTRACT","^MEVVTXC","Type^Initiated^Provider")
 QUIT
 ;
SECTION(title,root,captions) ; Adds the visit's records of one file
 NEW inverse,node,record
 SET inverse=""
 FOR  SET inverse=$ORDER(@root@("AA",dfn,inverse)) QUIT:inverse=""  DO
 . SET record=""
 . FOR  SET record=$ORDER(@root@("AA",dfn,inverse,record)) QUIT:record=""  DO
 . . SET node=@root@(record,0)
 . . IF $PIECE(node,"^",2)=ien DO PUT(""),PUT(title),FIELDS($$LINE^MEVREADRECORDS(root,node))
 QUIT
 ;
FIELDS(line) ; Adds a line for each field of a record that is not empty
 NEW index,value
 FOR index=1:1:$LENGTH(captions,"^") SET value=$PIECE($PIECE(line,"^",index),"|") IF value'="" DO
 . DO PUT("  "_$EXTRACT($PIECE(captions,"^",index)_$JUSTIFY("",22),1,22)_value)
 QUIT
 ;
PUT(text) ; Adds a line, or several if it is too long; never splits a character
 NEW cut
 FOR  DO  QUIT:text=""
 . FOR cut=80:-1:77 QUIT:$ASCII(text,cut+1)\64'=2
 . SET count=count+1,reply(count)=$EXTRACT(text,1,cut),text=$EXTRACT(text,cut+1,$LENGTH(text))
 QUIT
