MEVSAVEVISIT ; Saves records that belong to a visit: record (empty to add one) ^ visit ^ the record's own pieces
 ; Each call checks all pieces before it files the record.
 ;
VIF ; Call: record ^ visit ^ choice
 NEW choice
 SET reply=$$REFUSED^MEVRIGHTS("VIF"),choice=$PIECE(param,"^",3)
 QUIT:reply'=""
 IF $$TEXT^MEVCODES("FEEDING",choice)="" DO NO^MEVSAVE("The feeding choice is not known.") QUIT
 DO STORE("VIF",choice)
 QUIT
 ;
VELD ; Call: record ^ visit ^ the texts of 14 items, empty or one of the item's choices
 NEW bad,code,index,pieces,set,text
 SET reply=$$REFUSED^MEVRIGHTS("VELD"),bad=""
 QUIT:reply'=""
 FOR index=1:1:14 DO  QUIT:bad'=""
 . SET text=$PIECE(param,"^",index+2),set=$SELECT(index<13:"LEVEL",index=13:"TREND",1:"YESNO")
 . SET code=$$CODE^MEVCODES(set,text),$PIECE(pieces,"^",index)=code
 . IF text'="",code="" SET bad=$$BRIEF^MEVTEXT(text,40)
 IF bad'="" DO NO^MEVSAVE("The answer "_bad_" is not known.") QUIT
 DO STORE("VELD",pieces)
 QUIT
 ;
VAST ; Call: record ^ visit ^ severity's code ^ FEV 1 ^ FEF 25-75 ^ PEF ^ smoke ^ particulates ^ mites ^ management plan
 NEW bad,index,pieces,severity,text
 SET reply=$$REFUSED^MEVRIGHTS("VAST"),severity=$PIECE(param,"^",3),bad=""
 QUIT:reply'=""
 IF severity'="",$$TEXT^MEVCODES("SEVERITY",severity)="" DO NO^MEVSAVE("The severity is not known.") QUIT
 FOR index=4:1:6 SET text=$PIECE(param,"^",index) IF text'="" DO
 . SET $PIECE(param,"^",index)=$$VALUE^MEVNUMBER(text)
 . IF '$$LUNG(index,$PIECE(param,"^",index)) SET bad=$$BRIEF^MEVTEXT(text,20)
 IF bad'="" DO NO^MEVSAVE("The lung function value "_bad_" is not possible.") QUIT
 SET pieces=severity_"^"_$PIECE(param,"^",4,6)
 FOR index=7:1:10 DO  QUIT:bad'=""
 . SET text=$PIECE(param,"^",index),$PIECE(pieces,"^",index-2)=$$CODE^MEVCODES("YESNO",text)
 . IF text'="",$PIECE(pieces,"^",index-2)="" SET bad=$$BRIEF^MEVTEXT(text,20)
 IF bad'="" DO NO^MEVSAVE("The answer "_bad_" is not Yes or No.") QUIT
 DO STORE("VAST",pieces)
 QUIT
 ;
LUNG(index,text) ; True for a lung function value in its range; piece 6 is the peak flow
 IF text'?1.3N QUIT 0
 IF index=6 QUIT text>99&(text<701)
 QUIT text<151
 ;
VTXC ; Call: record ^ visit ^ P or M ^ date initiated ^ provider
 NEW date,provider,type
 SET reply=$$REFUSED^MEVRIGHTS("VTXC"),type=$PIECE(param,"^",3),provider=$PIECE(param,"^",5)
 QUIT:reply'=""
 IF $$TEXT^MEVCODES("CONTRACT",type)="" DO NO^MEVSAVE("The type of contract is not known.") QUIT
 SET date=$$PARSE^MEVDATE($PIECE(param,"^",4))
 IF date="" DO NO^MEVSAVE($$FAULT^MEVDATE($PIECE(param,"^",4),"The date initiated is not a date.")) QUIT
 IF date\1>$$TODAY^MEVDATE DO NO^MEVSAVE("The contract cannot begin in the future.") QUIT
 IF '$$EXISTS^MEVFILES(200,provider) DO NO^MEVSAVE("The provider is not known.") QUIT
 DO STORE("VTXC",type_"^"_date_"^"_provider)
 QUIT
 ;
VER ; Call: record ^ visit ^ urgency ^ entered by ^ arrival ^ other ^ notified ^ informant ^ disposition ^ other
 ; ^ departure ^ departure against advice ^ condition [^ VEN.`vendor or LOC.`location]
 NEW bad,captions,index,pieces,set,text
 SET reply=$$REFUSED^MEVRIGHTS("VER"),bad=""
 QUIT:reply'=""
 FOR index=3,4,5,7,9 DO
 . SET text=$PIECE(param,"^",index),set=$PIECE("^^URGENCY^ENTERED^ARRIVAL^^NOTIFIED^^DISPOSITION","^",index)
 . IF text'="",$$TEXT^MEVCODES(set,text)="" SET bad="The code "_$$BRIEF^MEVTEXT(text,20)_" is not known."
 FOR index=11,12 DO
 . SET text=$PIECE(param,"^",index)
 . SET text=$$FMFAULT^MEVDATE(text,"The departure "_$$BRIEF^MEVTEXT(text,20)_" is not a date.")
 . SET:text'="" bad=text
 SET param=$$PLAIN^MEVTEXT(param,"")
 SET captions="^^^^^other means of arrival^^informant^^other disposition^^^condition on departure"
 FOR index=6,8,10,13 IF $$CHARACTERS^MEVCODES($PIECE(param,"^",index))>200 DO
 . SET bad="The "_$PIECE(captions,"^",index)_" is longer than 200 characters."
 SET text=$$TRANSFER($PIECE(param,"^",14)) IF text="BAD" SET bad="The place of the transfer is not known."
 IF bad'="" DO NO^MEVSAVE(bad) QUIT
 SET pieces=$PIECE(param,"^",3)
 FOR index=5,6,4,8,7,9:1:13 SET pieces=pieces_"^"_$PIECE(param,"^",index)
 DO STORE("VER",pieces_"^"_text)
 QUIT
 ;
TRANSFER(pointer) ; entry;root of VEN.`7 or LOC.`7; empty for an empty pointer; "BAD" for an invalid one
 NEW file,ien
 IF pointer="" QUIT ""
 SET file=$SELECT($PIECE(pointer,"`")="VEN.":9999999.11,$PIECE(pointer,"`")="LOC.":4,1:0),ien=$PIECE(pointer,"`",2,99)
 IF 'file QUIT "BAD"
 IF '$$EXISTS^MEVFILES(file,ien) QUIT "BAD"
 QUIT ien_";"_$SELECT(file=4:"AUTTLOC(",1:"AUTTVNDR(")
 ;
STORE(kind,pieces) ; Files the checked pieces, from the fourth on, and raises the event
 NEW ien,root
 SET root="^MEV"_kind,ien=$$TARGET(root)
 QUIT:ien=""
 SET @root@(ien,0)=$PIECE(@root@(ien,0),"^",1,3)_"^"_pieces
 DO CHANGED^MEVSAVE($PIECE(@root@(ien,0),"^"),kind)
 QUIT
 ;
TARGET(root) ; The number of the record to save: the given one, if it may be changed, or a new one; else empty
 NEW ien,patient,visit
 SET ien=$PIECE(param,"^"),visit=$PIECE(param,"^",2)
 IF visit'?1N.8N DO NO^MEVSAVE("The visit is not known.") QUIT ""
 IF '$DATA(^MEVVST(visit,0)) DO NO^MEVSAVE("The visit "_visit_" does not exist.") QUIT ""
 SET patient=$PIECE(^MEVVST(visit,0),"^",2)
 IF ien="" QUIT $$FILEAT^MEVFILES(root,0,patient_"^"_visit_"^^",patient,$PIECE(^MEVVST(visit,0),"^"))
 IF '$$MAY^MEVSAVE(root,ien,patient,"record") QUIT ""
 DO KEEP^MEVFILES(root,ien)
 QUIT ien
